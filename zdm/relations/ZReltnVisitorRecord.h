// Gathers what relations refer to; see IZReltnRecord.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnRecord.h"
#include "zdm/relations/ZReltnVisitor.h"

class ZDM_API ZReltnVisitorRecord : public ZReltnVisitor<IZReltnRecord> {
  ZDM_OBJECT(ZReltnVisitorRecord)
 public:
  virtual bool IsDumpRef() { return false; }

  using ZReltnVisitor::Visit;
  /// Looks into the relation. False: the walk goes on.
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  /// Appends the target's object, if there is one. False.
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;

  void GetRecordObjects(IZRelation* reltn, IZDMObjColl* out) override;

 private:
  ZRefPtr<IZDMObjColl> out_;
};
