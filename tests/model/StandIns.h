// Small stand-ins for the attachments of an object whose classes are not in this build yet. They
// are registered under the identifiers of those classes, so that objects create them on first use;
// a class that arrives takes its place here, and the tests stay as they are.
#pragma once

#include "platform/ole/Bstr.h"
#include "tests/support/TestDatabase.h"
#include "zdm/extdata/IZExtData.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/framework/IZListImpl.h"
#include "zdm/parameters/IZParameterArray.h"

#include <map>
#include <string>

namespace zdm::test {
class ExtItem;
class ExtItems;
class ExtMgr;
class ParamArray;
}  // namespace zdm::test

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::ExtItem,
              "7E570000-0000-4000-8000-000000000201", IZObject, IZExtData)
ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::ExtItems,
              "00000000-0000-0000-0000-000000000000", IZObject, IZExtDataCollection)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::ExtMgr,
              "C0AD2D73-3E59-4B1C-AAE2-4856434B1BF3", IZObject, IZExtDataMgr)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::ParamArray,
              "B0BB0C42-3393-4715-9665-6844E5A8C2EE", IZObject, IZParameterArray)

namespace zdm::test {

/// Registers the stand-ins.
void RegisterStandIns();

/// An item that is only a name.
class ExtItem : public IZObjectImpl<IZExtData> {
  ZDM_OBJECT(ExtItem)
 public:
  using IZObjectImpl::Clone;

  explicit ExtItem(const OLECHAR* name = nullptr) : name_(name) {}
  void GetName(BSTR* out) override { name_.CopyTo(out); }
  void SetName(const OLECHAR* name) override { name_ = Bstr(name); }
  void CopyFrom(IZExtData* source) override { source->GetName(name_.Out()); }
  void Load(IZStream* stream, IZDatabase*) override { stream->ReadBSTR(name_.Out()); }
  void Save(IZStream* stream, IZDatabase*) override { stream->WriteBSTR(name_.Get()); }
  void Clone(IZExtData** out) override;

 private:
  Bstr name_;
};

class ExtItems : public IZListImpl<IZExtDataCollection, IZExtData> {
  ZDM_OBJECT(ExtItems)
 public:
  using IZListImpl::Clone;

  void Clone(IZExtDataCollection** out) override;
  void CopyFrom(IZExtDataCollection* source) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  void Load(IZStream* stream, IZDatabase* database) override;
};

class ExtMgr : public IZObjectImpl<IZExtDataMgr> {
  ZDM_OBJECT(ExtMgr)
 public:
  using IZObjectImpl::Clone;

  IZExtDataCollection* GetCollection(const GUID& key) override;
  IZExtDataCollection* QueryCollection(const GUID& key) override;
  void RemoveCollection(const GUID& key) override { groups_.erase(key.Data1); }
  void RemoveAll() override { groups_.clear(); }
  void Clone(IZExtDataMgr** out) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  void GetKeys(SAFEARRAY** out) override { *out = nullptr; }

 private:
  std::map<ULONG, ZRefPtr<IZExtDataCollection>> groups_;  // test keys differ in Data1
};

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
