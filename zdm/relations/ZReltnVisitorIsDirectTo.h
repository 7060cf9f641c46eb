// Answers whether an object refers to a given one directly: through a selected relation, a selected
// one nested in it, or a parameter, by a single target, a reference record or a path. The owner
// does not count. See IZReltnIsDirectTo.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnIsDirectTo.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorIsDirectTo : public ZReltnVisitor<IZReltnIsDirectTo> {
  ZDM_OBJECT(ZReltnVisitorIsDirectTo)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  void Initialize(eZRelation selector, IZDMObject* target) override;

 private:
  eZRelation selector_ = ZR_ALL;
  OID* target_ = nullptr;  // borrowed
};
