// A relation collection that, used as a visitor, records the relations through which an object is
// reached: in the collection it was given, or in its own list. A relation is recorded each time it
// is met; relations nested in it come before it. The walk is never stopped.
// As a collection it differs from CZReltnColl in what it does not pass on to its elements: see
// below. Copies share the elements.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnCollImpl.h"
#include "zdm/relations/IZReltnRecordObjInReltns.h"

class ZDM_API CZReltnRecordObjInReltns
    : public IZReltnCollImpl<IZObjectImpl<IZReltnRecordObjInReltns>> {
  ZDM_OBJECT(CZReltnRecordObjInReltns)
 public:
  CZReltnRecordObjInReltns() = default;
  CZReltnRecordObjInReltns(const CZReltnRecordObjInReltns& other);
  CZReltnRecordObjInReltns& operator=(const CZReltnRecordObjInReltns& other);
  ~CZReltnRecordObjInReltns() override;

  // Its own operations, after getVersion.
  virtual bool IsDumpRef() { return false; }
  /// Adds every element's box to `box`.
  virtual void UnionElementBoxes(GeBox* box, GiContext* context);

  void SetElementStatus(LONG bits) override;
  void ClearElementStatus(LONG bits) override;

  void CopyFrom(IZRelation*) override {}
  void Update(IZUpdater*, GiContext*) override {}
  void SetReltnStatus(LONG) override {}
  void ClearReltnStatus(LONG) override {}
  /// The elements are asked without a document.
  void AssertValid(IZDatabase* database) override;
  bool JudgeSame(IZRelation*) override { return false; }

  /// Looks at the valid elements that `coll` has now; at none when it is this collection.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool Visit(IZDMObject*, IZDMObject*, OID*) override { return false; }
  bool Visit(IZDMObject*, IZDMObject*) override { return false; }
  bool Visit(IZDMObject*) override { return false; }
  bool MapUID(IZDMObject*, IZDMObject*, IZRelation*, UID*) override { return false; }
  bool MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID*) override { return false; }
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  void Initialize(eZRelation selector, IZDMObject* target, IZReltnColl* out) override;

 private:
  void TakeReceiver(IZReltnColl* out);

  eZRelation selector_ = ZR_ALL;
  OID* target_ = nullptr;  // borrowed
  ZRefPtr<IZReltnColl> out_;
};
