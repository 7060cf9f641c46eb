// Invalidates relations that lead out of a set of objects; see IZReltnSelfContained.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnSelfContained.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorSelfContained : public ZReltnVisitor<IZReltnSelfContained> {
  ZDM_OBJECT(ZReltnVisitorSelfContained)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// Looks into a relation that is not diffusible. False: the next relation is looked at too.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// True when the record's own path or its target leads out of the set; `reltn` is invalid then.
  /// False without a relation.
  bool MapUID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, UID* uid) override;
  /// True when the path starts outside the set; `reltn`, unless it is null, is invalid then. An
  /// empty path leads nowhere.
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

  void SelfContained(IZDMObjColl* objects) override;
};
