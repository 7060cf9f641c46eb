// Small stand-ins for the attachments of an object whose classes are not in this build yet. They
// are registered under the identifiers of those classes, so that objects create them on first use;
// a class that arrives takes its place here, and the tests stay as they are.
#pragma once

#include "tests/support/TestDatabase.h"
#include "zdm/parameters/IZParameterArray.h"

#include <string>

namespace zdm::test {
class ParamArray;
}  // namespace zdm::test

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::ParamArray,
              "B0BB0C42-3393-4715-9665-6844E5A8C2EE", IZObject, IZParameterArray)

namespace zdm::test {

/// Registers the stand-ins.
void RegisterStandIns();

/// One relation value under any GUID, and the calls it was given, in words.
class ParamArray : public IZObjectImpl<IZParameterArray> {
  ZDM_OBJECT(ParamArray)
 public:
  using IZObjectImpl::Clone;

  void BeginAdd() override {}
  void Add(IZParameter*, LONG) override { Note("Add"); }
  void EndAdd() override {}
  void RemoveAll() override { relation = nullptr; }
  bool IsEmpty() override { return relation == nullptr; }
  LONG GetCount() override { return relation != nullptr ? 1 : 0; }
  IZParameter* GetAt(LONG) override { return nullptr; }
  bool RemoveAt(LONG) override { return false; }
  bool RemoveByGUID(const GUID&) override { return false; }
  bool Remove(IZParameter*) override { return false; }
  IZParameter* GetParameter(const GUID&) override;
  void BuildPropertyGroups(LONG, IZPropertyGroupColl*) override {}
  bool FillProperties(LONG, IZProperty*) override { return true; }
  bool ApplyProperties(LONG, IZProperty*, ULONG) override { return true; }
  bool GetParamDouble(const GUID*, double*) override { return Note("GetParamDouble"); }
  bool SetParamDouble(const GUID*, double) override { return Note("SetParamDouble"); }
  bool GetParamLong(const GUID*, LONG*) override { return Note("GetParamLong"); }
  bool SetParamLong(const GUID*, LONG) override { return Note("SetParamLong"); }
  bool GetParamString(const GUID*, BSTR*) override { return Note("GetParamString"); }
  bool SetParamString(const GUID*, const OLECHAR*) override { return Note("SetParamString"); }
  bool GetParamBool(const GUID*, bool*) override { return Note("GetParamBool"); }
  bool SetParamBool(const GUID*, bool) override { return Note("SetParamBool"); }
  void Clone(IZParameterArray** out) override;
  bool GetParamRelation(const GUID*, IZDMObject** out) override;
  bool SetParamRelation(const GUID*, IZDMObject*, bool) override {
    return Note("SetParamRelation");
  }
  bool GetParamValue(const GUID*, ZDfValue**) override { return Note("GetParamValue"); }
  bool SetParamValue(const GUID*, const ZDfValue*) override { return Note("SetParamValue"); }
  void AddDoubleParameter(IZDefinitionMgr*, const GUID*, USHORT, double, USHORT) override {}
  void AddLongParameter(IZDefinitionMgr*, const GUID*, USHORT, LONG, USHORT) override {}
  void AddRelationParameter(IZDefinitionMgr*, const GUID*, USHORT, IZDMObject*, bool,
                            USHORT) override {}
  void AddStringParameter(IZDefinitionMgr*, const GUID*, const OLECHAR*, USHORT) override {}
  void AddBoolParameter(IZDefinitionMgr*, const GUID*, bool, USHORT) override {}
  void AddValueParameter(IZDefinitionMgr*, const GUID*, const ZDfValue*, USHORT) override {}
  bool IsEqualTo(IZParameterArray*) override { return false; }
  void UpdateFrom(IZObject*, std::list<GUID>*) override {}
  void Save(IZStream* stream, IZDatabase* database) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  void SetOwner(IZDMObject* object) override { owner_ = object; }
  IZDMObject* GetOwner() override { return owner_; }
  void OnParameterChanged(IZParameter*) override {}
  void Reserved44() override {}
  ZParaArray* GetParaArray() override { return nullptr; }
  void AddMissingFrom(IZParameterArray*) override {}
  void ReplaceFrom(IZParameterArray*, bool, LONG) override {}
  bool IsExist(const GUID&) override { return false; }
  void CreateParameter(IZParameter** out) override { *out = nullptr; }

  ZRefPtr<IZSingleReltn> relation;
  std::string calls;

 private:
  bool Note(const char* call);

  IZDMObject* owner_ = nullptr;
};

}  // namespace zdm::test
