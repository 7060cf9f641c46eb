#include "zdm/identity/ZReltnVisitorMapIDForPaste.h"

#include "zdm/identity/CID.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjMgr.h"

#include <vector>

ZDM_OBJECT_BODY(ZReltnVisitorMapIDForPaste)

namespace {

using Objects = std::vector<ZRefPtr<IZDMObject>>;

/// Held, since what pasting calls may change the list.
template <class List>
Objects ObjectsOf(List& list) {
  Objects objects;
  for (LONGLONG pos = list.GetHeadPosition(); pos != 0;) {
    if (IZDMObject* object = list.GetNext(pos)) objects.emplace_back(object);
  }
  return objects;
}

/// Empties the pointer at the end, whatever happens.
template <class Holder>
class Emptied {
 public:
  explicit Emptied(Holder& holder) : holder_(holder) {}
  Emptied(const Emptied&) = delete;
  Emptied& operator=(const Emptied&) = delete;
  ~Emptied() { holder_ = Holder(); }

 private:
  Holder& holder_;
};

}  // namespace

// The map.

LONG ZReltnVisitorMapIDForPaste::MapID(LONG id) { return map_.Of(id); }

LONG ZReltnVisitorMapIDForPaste::MapID(IZDMObject* object) {
  return map_.Of(zdm::IDMap::IDOf(object));
}

LONG ZReltnVisitorMapIDForPaste::MapID(OID* oid) { return map_.Of(zdm::IDMap::IDOf(oid)); }

LONG ZReltnVisitorMapIDForPaste::AddMapIDPair(LONG from, LONG to) {
  map_.Add(from, to);
  return 0;
}

LONG ZReltnVisitorMapIDForPaste::AddMapIDPair(IZDMObject* from, IZDMObject* to) {
  return AddMapIDPair(zdm::IDMap::IDOf(from), zdm::IDMap::IDOf(to));
}

LONG ZReltnVisitorMapIDForPaste::AddMapIDPair(OID* from, OID* to) {
  return AddMapIDPair(zdm::IDMap::IDOf(from), zdm::IDMap::IDOf(to));
}

// Pasting.

void ZReltnVisitorMapIDForPaste::Paste(IZDatabase* db, IZDMObjColl* objects) {
  database_ = db;
  ids_ = db != nullptr ? db->GetOIDManager() : nullptr;
  paths_ = db != nullptr ? db->GetPIDManager() : nullptr;
  if (ids_ == nullptr || objects == nullptr) return;
  const Emptied forget(met_);
  const Objects all = ObjectsOf(*objects);
  for (IZDMObject* object : all) PasteToDatabase(object);
  met_.clear();
  for (IZDMObject* object : all) {
    if (met_.insert(object).second) object->VisitReferences(nullptr, this);
  }
}

void ZReltnVisitorMapIDForPaste::PasteToDatabase(IZDMObject* object) {
  struct Level {
    IZDMObject* manager;
    Objects objects;
    std::size_t next;
  };
  std::vector<Level> levels;
  const auto enter = [&](IZDMObject* member, bool isListed) {
    if (!Enlist(member, isListed)) return;
    if (auto* manager = zdm::ViewAs<IZDMObjMgr>(member)) {
      levels.push_back({member, ObjectsOf(*manager), 0});
    }
  };
  for (enter(object, false); !levels.empty();) {
    Level& level = levels.back();
    if (level.next == level.objects.size()) {
      levels.pop_back();
      continue;
    }
    IZDMObject* child = level.objects[level.next++];
    enter(child, child->GetOwner() == level.manager);
  }
}

/// False for an object that was pasted before.
bool ZReltnVisitorMapIDForPaste::Enlist(IZDMObject* object, bool isListed) {
  OID* oid = object->GetOID();
  if (oid == nullptr || !met_.insert(object).second) return false;
  oid->Object = object;
  object->SetStatus(ZOS_ATTACHED);
  object->SetStatus(ZOS_VALID);
  const LONG former = ids_->AssignNewID(oid);
  AddMapIDPair(former, oid->ID);
  if (isListed) return true;
  if (auto* owner = zdm::ViewAs<IZDMObjMgr>(object->GetOwner())) owner->AttachTail(object);
  return true;
}

// The walk.

bool ZReltnVisitorMapIDForPaste::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr || !reltn->JudgeReltnStatus(ZRS_PASTED)) return false;
  const Emptied afterwards(currentRelation_);
  currentRelation_ = reltn;
  return reltn->Accept(root, owner, this);
}

/// What the relation refers to was not pasted.
void ZReltnVisitorMapIDForPaste::Cut() {
  if (currentRelation_ != nullptr) currentRelation_->ClearReltnStatus(ZRS_VALID);
}

bool ZReltnVisitorMapIDForPaste::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  if (*oid == nullptr) return false;
  const LONG id = MapID(*oid);
  if (id == (*oid)->ID) {
    Cut();
    return false;
  }
  OID* found = ids_ != nullptr ? ids_->GetOIDByID(id) : nullptr;
  if (found != nullptr) *oid = found;
  return false;
}

bool ZReltnVisitorMapIDForPaste::MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID* cid) {
  if (cid == nullptr || cid->SelfPID != nullptr) return false;
  const bool hasPath = cid->RefPID != nullptr;
  if (hasPath && cid->RefPID->OIDs.empty()) return false;
  OID* key = hasPath ? cid->RefPID->OIDs.front() : cid->ReltnOID;
  const LONG id = key != nullptr ? key->ID : 0;
  const LONG mapped = MapID(id);
  if (mapped == id) {
    Cut();
    return false;
  }
  OID* found = ids_ != nullptr ? ids_->GetOIDByID(mapped) : nullptr;
  if (found == nullptr) return false;
  if (!hasPath) {
    cid->ReltnOID = found;
  } else if (paths_ != nullptr) {
    std::list<OID*> records = cid->RefPID->OIDs;
    records.front() = found;
    cid->RefPID = paths_->QueryPID(records);
  }
  return false;
}
