// The manager of a document's own parameters; see IZParameterMgr.h.
#pragma once

#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterMgr.h"

struct IZDMParameter;

class ZDM_API CZDMParameterMgr : public IZDMObjMgrImpl<IZParameterMgr> {
 public:
  using IZDMObjMgrImpl::CopyFrom;

  /// A new parameter, one reference for the caller. It follows the operations of the templates.
  virtual void CreateParameter(IZDMParameter** out);

  ZDM_OBJECT(CZDMParameterMgr)

  // IZDMObject.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// A group for each definition index, in the order in which the indexes first occur.
  void BuildPropertyGroups(LONG context, IZPropertyGroupColl* groups) override;
  bool FillProperties(LONG context, IZProperty* property) override;
  bool ApplyProperties(LONG context, IZProperty* property, ULONG reserved) override;
  bool GetParamDouble(const GUID* definitionGUID, double* out) override;
  bool SetParamDouble(const GUID* definitionGUID, double value) override;
  bool GetParamLong(const GUID* definitionGUID, LONG* out) override;
  bool SetParamLong(const GUID* definitionGUID, LONG value) override;
  bool GetParamString(const GUID* definitionGUID, BSTR* out) override;
  bool SetParamString(const GUID* definitionGUID, const OLECHAR* text) override;
  bool GetParamValue(const GUID* definitionGUID, ZDfValue** out) override;
  bool SetParamValue(const GUID* definitionGUID, const ZDfValue* value) override;
  bool GetParamRelation(const GUID* definitionGUID, IZDMObject** out) override;
  bool GetParamBool(const GUID* definitionGUID, bool* out) override;
  bool SetParamBool(const GUID* definitionGUID, bool value) override;

  // IZParameterMgr.
  bool FindParameter(const GUID* definitionGUID, IZParameter** out) override;
  void ExportParameters(IZParameterArray** out) override;
  bool SetManagedParamRelation(const GUID* definitionGUID, IZDMObject* object,
                               bool diffusible) override;
  void AddDoubleParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID, USHORT key,
                          double value, USHORT flags) override;
  void AddLongParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID, USHORT key,
                        LONG value, USHORT flags) override;
  void AddRelationParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID, USHORT key,
                            IZDMObject* object, bool diffusible, USHORT flags) override;
  void AddStringParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                          const OLECHAR* text, USHORT flags) override;
  void AddBoolParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID, bool value,
                        USHORT flags) override;
  void AddValueParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                         const ZDfValue* value, USHORT flags) override;
  bool IsEqualTo(IZParameterArray* other) override;
  void UpdateFrom(IZObject* source, std::list<GUID>* changed) override;
  bool HasParameter(const GUID* definitionGUID) override;

 private:
  template <class Visit>
  IZParameter* FindFirst(Visit visit);
  IZParameter* FindByDefinition(const GUID* definitionGUID);
  template <class Use>
  bool With(const GUID* definitionGUID, Use use);
  template <class Set>
  void Create(IZDefinitionMgr* definitions, const GUID* definitionGUID, const USHORT* key,
              USHORT flags, Set set);
};
