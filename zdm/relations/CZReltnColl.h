// The ordered list of relations an object owns. It is itself a relation, so collections nest,
// and it can act as a visitor that gathers the relations it is shown.
// Elements: one reference each; may be null. Only elements with ZRS_VALID are visited, saved and
// compared; others keep their place. Stream form: above Save in IZReltnCollImpl.inl.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnCollImpl.h"
#include "zdm/relations/IZReltnCollector.h"

class ZDM_API CZReltnColl
    : public IZReltnCollImpl<IZObjectImpl<IZReltnCollector>, IZObjectImpl<IZRelation>> {
  ZDM_OBJECT(CZReltnColl)
 public:
  CZReltnColl() = default;
  ~CZReltnColl() override;

  // Its own operations, after getVersion.
  using IZReltnCollImpl::Clone;
  virtual bool IsDumpRef() { return false; }
  /// A new collection that has copied from this one (one reference for the caller).
  virtual void Clone(IZRelation** out);

  /// Bounds over all elements, in drawing units. `sub` is not used.
  void GetBox(double* box, SubID* sub, GiContext* context) override;
  void SetVisibility(eZGiDraw draw, bool visible, GiContext* context) override;
  /// The first that an element answers (borrowed); null if none does.
  IZDispAttrib* GetDispAttrib() override;

  /// Replaces the elements by clones of those of `other`, invalid ones included; what cannot be
  /// cloned is left out. Null, this collection and a relation that is no collection change nothing.
  void CopyFrom(IZRelation* other) override;
  // Each of the next four reaches every element that is not null, valid or not.
  void Update(IZUpdater* updater, GiContext* context) override;
  void SetReltnStatus(LONG bits) override;
  void ClearReltnStatus(LONG bits) override;
  void AssertValid(IZDatabase* database) override;
  /// True when the valid elements are the same, one by one in list order.
  bool JudgeSame(IZRelation* other) override;

  /// Gathers the valid elements of `coll` that the selector picks.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override;
  /// Appends `reltn` if the selector picks it by the strict test. False: the walk goes on.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool Visit(IZDMObject*, IZDMObject*, OID*) override { return false; }
  bool Visit(IZDMObject*, IZDMObject*) override { return false; }
  bool Visit(IZDMObject*) override { return false; }
  bool MapUID(IZDMObject*, IZDMObject*, IZRelation*, UID*) override { return false; }
  bool MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID*) override { return false; }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID**) override { return false; }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID**) override { return false; }
  void SetReltnType(eZRelation type) override { selector_ = type; }

 private:
  eZRelation selector_ = ZR_ALL;
};
