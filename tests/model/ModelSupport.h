// Objects and visitors for tests of data-model objects.
#pragma once

#include "platform/system/Text.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/UIDReltn.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <gtest/gtest.h>

#include <string>

namespace zdm::test {}  // namespace zdm::test

ZDM_TEST_CLASS(Canary, IZObject, IZReltnVisitor)
ZDM_TEST_CLASS(Stray, IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// An item of extended data that is only a name.
inline ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name) {
  auto item = NewOf<IZExtDataAccess, CZExtDataObj>();
  item->SetName(name);
  return item;
}

/// A new array of one parameter, without definition, that refers to `target`.
ZRefPtr<IZParameterArray> ParametersTo(IZDMObject* target);

/// Looks inside every relation and writes down the IDs it is offered, each followed by a blank;
/// "-" for a null record. Answers true once to the ID `stopAt`.
class Canary : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(Canary)
 public:
  using ZReltnVisitor::Visit;

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* oid) override {
    askedRoot = root;
    askedOwner = owner;
    return Note(oid);
  }
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override {
    return ZReltnVisitor::Visit(root, owner, coll);
  }
  bool MapUID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, UID* uid) override {
    return ZReltnVisitor::MapUID(root, owner, reltn, uid);
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override { return Note(*oid); }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) override { return Note(*pid); }

  std::string ids;
  LONG stopAt = 0;
  IZDMObject* askedRoot = nullptr;
  IZDMObject* askedOwner = nullptr;

 private:
  bool Note(const KID* record) {
    ids += record != nullptr ? std::to_string(record->ID) + " " : "- ";
    return record != nullptr && record->ID == stopAt;
  }
};

/// The IDs that the object offers.
inline std::string IDsOffered(IZDMObject& object, LONG stopAt = 0) {
  Canary visitor;
  visitor.stopAt = stopAt;
  object.VisitReferences(&object, &visitor);
  return visitor.ids;
}

/// An object of a class that the factory does not know.
class Stray : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Stray)
 public:
  void Draw(IZGiDevice*, SubID*, GiContext*) override { ++drawn; }
  IZGiMaterial* GetCategoryMaterial() override { return categoryMaterial; }

  int drawn = 0;
  ZRefPtr<IZGiMaterial> categoryMaterial;
};

inline ZRefPtr<IZDMObject> MakePlain() { return MakeObject<IZDMObject, CZDMPlainObject>(); }

/// "-" for none.
inline std::string NameOf(IZDMObject& object) {
  Bstr name;
  object.GetName(name.Out());
  return name.IsNull() ? "-" : ToUtf8(name.Get());
}

/// Tests of objects of a document.
class DMObject : public testing::Test {
 protected:
  DMObject() { RegisterDocumentClasses(); }
  TestDatabase db;
};

}  // namespace zdm::test
