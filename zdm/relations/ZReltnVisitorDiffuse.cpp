#include "zdm/relations/ZReltnVisitorDiffuse.h"

#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/PathOffer.h"

ZDM_OBJECT_BODY(ZReltnVisitorDiffuse)

void ZReltnVisitorDiffuse::Initialize(LONG status, bool upward) {
  status_ = status;
  upward_ = upward;
}

bool ZReltnVisitorDiffuse::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn != nullptr && reltn->IsReltnDiffusible()) reltn->Accept(root, owner, this);
  return false;
}

bool ZReltnVisitorDiffuse::Visit(IZDMObject*, IZDMObject* owner, OID* ownerOid) {
  if (owner->JudgeStatus(status_)) return true;
  owner->SetStatus(status_);
  if (upward_ && ownerOid != nullptr) Walk({ownerOid->Object, ownerOid});
  return false;
}

bool ZReltnVisitorDiffuse::MapOID(IZDMObject* root, IZDMObject*, IZRelation*, OID** oid) {
  if (*oid != nullptr) Walk({root, *oid});
  return false;
}

bool ZReltnVisitorDiffuse::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) {
  return zdm::OfferPath(*this, root, owner, *pid);
}

/// Walks the object of `first` and all that is reached from it; while another object is offering,
/// once that is done.
void ZReltnVisitorDiffuse::Walk(const Entry& first) {
  if (entries_.IsGathering()) return entries_.Push(first);
  for (entries_.Start(first); !entries_.IsEmpty();) {
    const Entry entry = entries_.Top();
    entries_.Pop();
    IZDMObject* object = entry.record->Object;
    if (object == nullptr || object->JudgeStatus(status_)) continue;
    entries_.Gather([&] { object->VisitReferences(entry.root, this); });
    // An embedded object does so itself only if its extension offers the owner.
    object->SetStatus(status_);
  }
}
