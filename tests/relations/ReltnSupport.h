// Relations, a database and visitors for tests of references. Relations are named by a letter,
// which is their tag, so that the name is copied and stored with them.
#pragma once

#include "tests/support/ByteStream.h"
#include "tests/support/TestClasses.h"
#include "zdm/framework/ZClass.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/relations/CZReltnColl.h"
#include "zdm/relations/IZSingleReltnImpl.h"
#include "zdm/relations/ZDfValue.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zdm::test {

class PlainReltn;
class Shape;
class Thing;

}  // namespace zdm::test

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::PlainReltn,
              "69F8E456-23A8-4BF9-A765-5CCF27951F72", IZObject, IZRelation, IZSingleReltn)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Shape, "7E570000-0000-4000-8000-000000000101",
              IZObject, IZRelation)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Thing, "7E570000-0000-4000-8000-000000000102",
              IZObject, IZRelation, IZDMObject)

namespace zdm::test {

/// An object without geometry.
class Thing : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Thing)
 public:
  Thing() { ++alive; }
  ~Thing() override { --alive; }

  inline static int alive = 0;
};

/// The plain single-target relation that a host provides.
class PlainReltn : public IZSingleReltnImpl<IZSingleReltn> {
  ZDM_OBJECT(PlainReltn)
 public:
  PlainReltn() { ++alive; }
  ~PlainReltn() override { --alive; }

  inline static int alive = 0;
};

/// A relation without a target that shows something: a box, a visibility, an attribute.
class Shape : public IZRelationImpl<IZRelation> {
  ZDM_OBJECT(Shape)
 public:
  using IZRelationImpl::Transform;

  void GetBox(double* box, SubID* sub, GiContext* context) override;
  void SetVisibility(eZGiDraw draw, bool visible, GiContext* context) override;
  IZDispAttrib* GetDispAttrib() override { return attribute; }
  void Update(IZUpdater*, GiContext*) override { ++updates; }
  void AssertValid(IZDatabase* database) override {
    ++validations;
    validatedFor = database;
  }
  void Transform(const GeMatrix& matrix) override;

  double box[6] = {0, 0, 0, 1, 1, 1};
  IZDispAttrib* attribute = nullptr;
  bool visible = true;
  int updates = 0;
  int validations = 0;
  IZDatabase* validatedFor = nullptr;  // of the last AssertValid
  XYZ moved;                           // translation of the last Transform
  SubID* askedSub = nullptr;           // of the last GetBox
  GiContext* askedContext = nullptr;
};

/// A document of which only the look-up of records works.
class Lookup : public IZObjectImpl<IZDatabase> {
 public:
  COIDManager* GetOIDManager() override { return nullptr; }
  CPIDManager* GetPIDManager() override { return nullptr; }
  OID* GetOIDByID(LONG id) override { return records.count(id) != 0 ? records[id] : nullptr; }
  void OnStateChanged(LONG) override {}
  void CreateByType(BYTE, IZDMObject** out) override { *out = nullptr; }
  IZPersistStrategy* GetPersistStrategy() override { return nullptr; }
  void GetMergeStrategy(IZDMObjMgr*, IZDMObjColl*, IZMergeStrategy** out) override {
    *out = nullptr;
  }
  BYTE GetMergeOption(IZDMObject*, IZDMObject*) override { return 0; }
  IZOptPath* GetOptPath() override { return nullptr; }

  std::map<LONG, OID*> records;
};

/// Writes down what it is offered, in words: relations by their letter, records by their ID.
/// Looks inside relations when `descends` is set, and answers true once to the word `stopAt`.
class Recorder : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using ZReltnVisitor::Visit;

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* oid) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  std::string words;
  std::string stopAt;
  bool descends = false;
  OID* newOid = nullptr;  // what MapOID stores, unless null
  PID* newPid = nullptr;
  IZRelation* askedReltn = nullptr;  // of the last Map operation
  IZDMObject* askedRoot = nullptr;
  IZDMObject* askedOwner = nullptr;

 private:
  bool Note(const std::string& word);
};

ZRefPtr<IZSingleReltn> Valid(char name);
ZRefPtr<IZSingleReltn> Invalid(char name);

/// Letters make plain relations in this order: "aB-" is a valid a, an invalid b and a null element.
ZRefPtr<IZReltnColl> MakeReltns(const std::string& letters);
/// The same form for what a collection holds; "?" for a nested collection.
std::string LettersIn(IZReltnColl& coll);

/// The bytes that Save writes.
std::vector<BYTE> Saved(IZRelation& reltn);

struct ValueReleaser {
  void operator()(ZDfValue* value) const { value->Release(); }
};
using HeldValue = std::unique_ptr<ZDfValue, ValueReleaser>;

}  // namespace zdm::test
