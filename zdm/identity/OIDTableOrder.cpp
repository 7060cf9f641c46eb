// Who refers to whom, and the orders that follow from it.
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ReferenceCollector.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/IZReltnIsDirectTo.h"
#include "zdm/relations/IZReltnRecordObjInReltns.h"

#include <algorithm>
#include <unordered_map>

namespace {

using DirectTo = ZRefPtr<IZReltnIsDirectTo>;

DirectTo NewDirectTo(eZRelation selector, IZDMObject* target) {
  auto visitor = zdm::CreateAs<IZReltnIsDirectTo, ZReltnVisitorIsDirectTo>();
  if (visitor != nullptr) visitor->Initialize(selector, target);
  return visitor;
}

bool Refers(IZDMObject* object, const DirectTo& visitor) {
  return visitor != nullptr && object->VisitReferences(object, visitor);
}

bool IsLive(const OID* oid) { return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID); }

/// What IsAGreaterThanB answers, with one walk for each object in place of two for each pair.
class Greater {
 public:
  bool operator()(const OID* a, const OID* b) {
    if (a->Object == nullptr || b->Object == nullptr || !Refers(a, b)) return false;
    return !Refers(b, a) || a->ID > b->ID;
  }

 private:
  bool Refers(const OID* from, const OID* to) {
    const auto [entry, isNew] = targets_.try_emplace(from);
    if (isNew) entry->second = zdm::ReferenceCollector::TargetsOf(from->Object);
    return entry->second.contains(to->Object->GetOID());
  }

  std::unordered_map<const OID*, std::unordered_set<const OID*>> targets_;
};

}  // namespace

bool COIDManager::IsAGreaterThanB(OID* a, OID* b) {
  if (!Refers(a->Object, NewDirectTo(ZR_ALL, b->Object))) return false;
  return !Refers(b->Object, NewDirectTo(ZR_ALL, a->Object)) || a->ID > b->ID;
}

// Passes from the head exchange neighbours of which the left is greater; each pass ends one place
// earlier than the one before, and the first without an exchange is the last. A pass does something
// only at places whose record is greater than the next, and an exchange makes new such places only
// beside itself. So passes go along those places, not along the list.
void COIDManager::Sort(std::vector<OID*>& oids) {
  Greater greater;
  std::vector<std::size_t> places;  // where the record is greater than the next, ascending
  std::vector<std::size_t> next;    // those for the next pass
  const auto note = [&](std::size_t place) {
    if (greater(oids[place], oids[place + 1])) next.push_back(place);
  };
  for (std::size_t place = 0; place + 1 < oids.size(); ++place) note(place);
  for (std::size_t end = oids.size(); !next.empty(); --end) {
    places.swap(next);
    next.clear();
    std::size_t done = 0;  // the pass is beyond the places below
    for (std::size_t place : places) {
      if (place + 1 >= end) break;
      if (place < done) continue;
      do {
        std::swap(oids[place], oids[place + 1]);
        if (place > 0) note(place - 1);
        ++place;
      } while (place + 1 < end && greater(oids[place], oids[place + 1]));
      done = place + 1;
    }
  }
}

void COIDManager::ReSort() {
  std::vector<OID*> oids = GetOIDs();
  std::ranges::stable_sort(oids, {}, [](const OID* oid) { return oid->ID; });
  Replace(std::move(oids));
  SetIDRange();
}

int COIDManager::IsDependByOtherObjs(IZDMObject* object) {
  const DirectTo visitor = NewDirectTo(ZR_DIFFUSIBLE, object);
  return std::ranges::any_of(GetOIDs(),
                             [&](const OID* oid) {
                               return IsLive(oid) && oid->Object != object &&
                                      Refers(oid->Object, visitor);
                             })
             ? 1
             : 0;
}

LONG COIDManager::GetReltnObjs(eZRelation kind, IZDMObject* target, IZDMObjColl* out) {
  const DirectTo visitor = NewDirectTo(kind, target);
  for (const OID* oid : GetOIDs()) {
    if (IsLive(oid) && Refers(oid->Object, visitor)) out->AddTail(oid->Object);
  }
  return 0;
}

LONG COIDManager::GetRelations(eZRelation kind, IZDMObject* target, IZReltnColl* relations,
                               IZDMObjColl* out) {
  const auto recorder = zdm::CreateAs<IZReltnRecordObjInReltns, CZReltnRecordObjInReltns>();
  if (recorder == nullptr) return 0;
  recorder->Initialize(kind, target, relations);
  for (const OID* oid : GetOIDs()) {
    if (oid->Object != nullptr && oid->Object->VisitReferences(nullptr, recorder)) {
      out->AddTail(oid->Object);
    }
  }
  return 0;
}
