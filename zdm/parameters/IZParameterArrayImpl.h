// The parameters of one object. Whatever takes a parameter away from the array also takes back the
// link through which it reports changes here, unless it reports to another array by then.
// Stream form: above Save in IZParameterArrayImpl.cpp.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/framework/WeakView.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/ZParaArray.h"

#include <optional>

namespace zdm {
class BulkAdd;
}

class ZDM_API IZParameterArrayImpl : public IZObjectImpl<IZParameterArray> {
 public:
  using IZObjectImpl::Clone;

  IZParameterArrayImpl() = default;
  IZParameterArrayImpl(const IZParameterArrayImpl&) = delete;
  IZParameterArrayImpl& operator=(const IZParameterArrayImpl&) = delete;
  ~IZParameterArrayImpl() override;

  /// While a bulk add is open, another call changes nothing.
  void BeginAdd() override;
  void Add(IZParameter* parameter, LONG reserved) override;
  void EndAdd() override;
  /// What was added since BeginAdd stays in the bulk add.
  void RemoveAll() override { Hold({}); }
  bool IsEmpty() override { return storage_.GetCount() == 0; }
  LONG GetCount() override { return storage_.GetCount(); }
  IZParameter* GetAt(LONG index) override;
  bool RemoveAt(LONG index) override;
  bool RemoveByGUID(const GUID& definitionGUID) override;
  bool Remove(IZParameter* parameter) override;
  IZParameter* GetParameter(const GUID& definitionGUID) override;

  void BuildPropertyGroups(LONG context, IZPropertyGroupColl* groups) override;
  bool FillProperties(LONG context, IZProperty* property) override;
  bool ApplyProperties(LONG context, IZProperty* property, ULONG reserved) override;

  bool GetParamDouble(const GUID* definitionGUID, double* out) override;
  bool SetParamDouble(const GUID* definitionGUID, double value) override;
  bool GetParamLong(const GUID* definitionGUID, LONG* out) override;
  bool SetParamLong(const GUID* definitionGUID, LONG value) override;
  bool GetParamString(const GUID* definitionGUID, BSTR* out) override;
  bool SetParamString(const GUID* definitionGUID, const OLECHAR* text) override;
  bool GetParamBool(const GUID* definitionGUID, bool* out) override;
  bool SetParamBool(const GUID* definitionGUID, bool value) override;
  void Clone(IZParameterArray** out) override;
  bool GetParamRelation(const GUID* definitionGUID, IZDMObject** out) override;
  bool SetParamRelation(const GUID* definitionGUID, IZDMObject* object, bool diffusible) override;
  bool GetParamValue(const GUID* definitionGUID, ZDfValue** out) override;
  bool SetParamValue(const GUID* definitionGUID, const ZDfValue* value) override;

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
  void Save(IZStream* stream, IZDatabase* database) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  void SetOwner(IZDMObject* object) override;
  IZDMObject* GetOwner() override;
  void OnParameterChanged(IZParameter* parameter) override;
  void Reserved44() override {}
  ZParaArray* GetParaArray() override { return &storage_; }
  void AddMissingFrom(IZParameterArray* other) override;
  /// Ends a bulk add that is open, without what was added.
  void ReplaceFrom(IZParameterArray* other, bool keepOwnValues, LONG reserved) override;
  bool IsExist(const GUID& definitionGUID) override { return storage_.IsExist(definitionGUID); }
  void CreateParameter(IZParameter** out) override;

 private:
  IZParameter* Find(const GUID* definitionGUID);
  void Hold(ZParaArray parameters);
  void Disown(IZParameter* parameter);
  void DropBulkAdd();
  template <class Offer>
  void OfferProperty(IZProperty* property, const Offer& offer);
  template <class Set>
  void AddTyped(IZDefinitionMgr* definitions, const GUID* definitionGUID, std::optional<USHORT> key,
                USHORT flags, const Set& set);

  ZParaArray storage_;
  IZDMObject* owner_ = nullptr;  // an owner that holds this array, and lets go of it in time
  BYTE flags_ = 0;               // kBulkAddOpen; the other bits are kept as loaded
  zdm::WeakView<IZDMObject> looseOwner_;  // any other
  zdm::BulkAdd* bulkAdd_ = nullptr;       // while one is open; borrowed
};
