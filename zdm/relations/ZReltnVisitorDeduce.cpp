#include "zdm/relations/ZReltnVisitorDeduce.h"

#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/PathOffer.h"

ZDM_OBJECT_BODY(ZReltnVisitorDeduce)

bool ZReltnVisitorDeduce::Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) {
  if (coll == nullptr) return false;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    if (Visit(root, owner, coll->GetNext(pos))) return true;
  }
  return false;
}

bool ZReltnVisitorDeduce::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  return reltn != nullptr && reltn->Accept(root, owner, this);
}

bool ZReltnVisitorDeduce::Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) {
  if (!owner->JudgeOptionAllowed(static_cast<LONGLONG>(option_))) {
    owner->SetStatus(visited_);
    return ownerOid != nullptr || root == nullptr;
  }
  if (owner->JudgeStatus(affected_) || owner->JudgeStatus(visited_)) return true;
  owner->SetStatus(visited_);
  return false;
}

bool ZReltnVisitorDeduce::MapOID(IZDMObject* root, IZDMObject* owner, IZRelation*, OID** oid) {
  if (*oid == nullptr) return false;
  const Reference reference = {root, owner, *oid};
  if (!undecided_.IsGathering()) return Search(reference);
  undecided_.Push(reference);
  return (*oid)->JudgeStatus(affected_);  // what comes after it will not be asked
}

bool ZReltnVisitorDeduce::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) {
  return zdm::OfferPath(*this, root, owner, *pid);
}

bool ZReltnVisitorDeduce::IsSearchable(const Reference& reference) const {
  if (reference.entered || reference.target->JudgeStatus(visited_)) return false;
  IZDMObject* object = reference.target->Object;
  return object != nullptr && !object->JudgeStatus(visited_);
}

/// Decides `first`, and on the way the references of every object that is entered for it.
bool ZReltnVisitorDeduce::Search(const Reference& first) {
  bool depends = false;
  for (undecided_.Start(first); !undecided_.IsEmpty();) {
    Reference& top = undecided_.Top();
    depends = top.target->JudgeStatus(affected_);
    if (!depends && IsSearchable(top)) {
      top.entered = true;
      IZDMObject* const object = top.target->Object;
      undecided_.Gather([this, object, root = top.root] { object->VisitReferences(root, this); });
      // An embedded object does so itself only if its extension offers the owner.
      if (!object->JudgeStatus(affected_)) object->SetStatus(visited_);
      continue;  // decided when its turn comes again
    }
    if (depends) {
      if (top.owner != nullptr) top.owner->SetStatus(affected_);
      if (top.root != nullptr) top.root->SetStatus(affected_);
    }
    undecided_.Pop();
    // A dependency ends the walk of the object: what is left of its references goes.
    while (depends && !undecided_.IsEmpty() && !undecided_.Top().entered) undecided_.Pop();
  }
  return depends;
}
