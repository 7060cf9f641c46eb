// Sets or clears status bits on relations; see IZReltnStatus. Made directly, not by the factory; it
// may live on the stack.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnStatus.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorStatus : public ZReltnVisitor<IZReltnStatus> {
  ZDM_OBJECT(ZReltnVisitorStatus)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// False: the walk goes on.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;

  void Initialize(eZRelation selector, LONG bits, bool set) override;
  void Isolate(IZDMObject* object, eZRelation selector, bool set) override;
  void Isolate(IZDMObjColl* objects, eZRelation selector, bool set) override;

 private:
  eZRelation selector_ = ZR_ALL;
  bool set_ = true;
  LONG bits_ = 0;
};
