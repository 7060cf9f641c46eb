#include "zdm/relations/ZReltnVisitorIsDirectTo.h"

#include "zdm/model/IZDMObject.h"
#include "zdm/relations/PathOffer.h"
#include "zdm/relations/ReltnSelector.h"

ZDM_OBJECT_BODY(ZReltnVisitorIsDirectTo)

void ZReltnVisitorIsDirectTo::Initialize(eZRelation selector, IZDMObject* target) {
  selector_ = selector;
  target_ = target != nullptr ? target->GetOID() : nullptr;
}

bool ZReltnVisitorIsDirectTo::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  return reltn != nullptr && zdm::SelectsLoosely(selector_, *reltn) &&
         reltn->Accept(root, owner, this);
}

bool ZReltnVisitorIsDirectTo::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  return *oid != nullptr && *oid == target_;
}

bool ZReltnVisitorIsDirectTo::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) {
  return zdm::OfferPath(*this, root, owner, *pid);
}
