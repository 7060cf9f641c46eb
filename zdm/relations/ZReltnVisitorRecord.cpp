#include "zdm/relations/ZReltnVisitorRecord.h"

#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"

ZDM_OBJECT_BODY(ZReltnVisitorRecord)

bool ZReltnVisitorRecord::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn != nullptr) reltn->Accept(root, owner, this);
  return false;
}

bool ZReltnVisitorRecord::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  if (*oid != nullptr && out_ != nullptr) out_->AddTail((*oid)->Object);
  return false;
}

void ZReltnVisitorRecord::GetRecordObjects(IZRelation* reltn, IZDMObjColl* out) {
  out_ = out;
  Visit(nullptr, nullptr, reltn);
}
