// Finds what depends on affected objects; see IZReltnDeduce. A depth-first search: an object's
// walk ends at the first dependency found, and what has ZOS_DEDUCEVISITED without being affected
// counts as independent, also while it is on the way that is being searched. Objects are entered
// in that order, but not by recursion: chains of any length are walked on a bounded stack.
#pragma once

#include "zdm/identity/ObjectOptions.h"
#include "zdm/identity/eZObjStatus.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnDeduce.h"
#include "zdm/relations/WalkStack.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorDeduce : public ZReltnVisitor<IZReltnDeduce> {
  ZDM_OBJECT(ZReltnVisitorDeduce)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// Looks at every element, valid or not.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// False when the references of `owner` are to be searched: once, and of an object without
  /// zdm::kReferencesCount only when it has no owner and the walk has a root.
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) override;
  /// True when the target is affected or, searched now, turns out to be; `owner` and `root` are
  /// affected then.
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 private:
  struct Reference {
    IZDMObject* root;
    IZDMObject* owner;
    OID* target;
    bool entered = false;  // the target's references are above this one
  };

  bool IsSearchable(const Reference& reference) const;
  bool Search(const Reference& first);

  ULONGLONG option_ = zdm::kReferencesCount;
  LONG affected_ = ZOS_AFFECTED;
  LONG visited_ = ZOS_DEDUCEVISITED;
  zdm::WalkStack<Reference> undecided_;
};
