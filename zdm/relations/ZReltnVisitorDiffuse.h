// Spreads a status bit along diffusible relations; see IZReltnDiffuse. Objects are entered depth
// first, the owner before the relations, but not by recursion: chains of any length are walked on
// a bounded stack. Made directly, not by the factory; it may live on the stack.
#pragma once

#include "zdm/identity/eZObjStatus.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnDiffuse.h"
#include "zdm/relations/WalkStack.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorDiffuse : public ZReltnVisitor<IZReltnDiffuse> {
  ZDM_OBJECT(ZReltnVisitorDiffuse)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// Looks into a diffusible relation. False.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// Marks `owner`, and climbs to its owner if wanted. True when `owner` had the mark: it is not
  /// walked again.
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) override;
  /// Enters the target. False.
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  void Initialize(LONG status, bool upward) override;
  void get_Status(LONG* out) override { *out = status_; }

 private:
  struct Entry {
    IZDMObject* root;
    OID* record;
  };

  void Walk(const Entry& first);

  LONG status_ = ZOS_DIFFUSEMARK;
  bool upward_ = true;
  zdm::WalkStack<Entry> entries_;
};
