#include "document/ReferenceWalk.h"

#include "zdm/categories/CategoryTree.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/parameters/IZParameter.h"

namespace zdm {

void ReferenceWalk::Walk(IZDMObject* object) {
  object->VisitReferences(object, this);
  if (auto* parameter = ViewAs<IZParameter>(object)) {
    via_ = ReferenceVia::kParameter;
    parameter->Accept(object, object, this);
    via_ = ReferenceVia::kRelation;
  }
  auto* manager = ViewAs<IZDMObjMgr>(object);
  IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr;
  if (current != nullptr) Meet(object, current->GetOID(), ReferenceVia::kCurrent);
}

bool ReferenceWalk::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr || depth_ == kMaxCategoryDepth) return false;
  if (depth_++ == 0) outermost_ = reltn;
  reltn->Accept(root, owner, this);
  if (--depth_ == 0) outermost_ = nullptr;
  return false;
}

bool ReferenceWalk::MapOID(IZDMObject*, IZDMObject* owner, IZRelation*, OID** oid) {
  if (*oid != nullptr) Meet(owner, *oid, via_);
  return false;
}

bool ReferenceWalk::MapPID(IZDMObject*, IZDMObject* owner, IZRelation*, PID** pid) {
  if (*pid == nullptr) return false;
  for (OID* oid : (*pid)->OIDs) {
    if (oid != nullptr) Meet(owner, oid, ReferenceVia::kPath);
  }
  return false;
}

}  // namespace zdm
