// What Audit says can be repaired, one kind after the other.
#include "document/Audit.h"
#include "document/CZDocument.h"
#include "document/ManagerLists.h"
#include "document/Recovered.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace zdm {

namespace {

/// Ascending, every ID once, counters beyond the ends. Of two records the first keeps the ID.
void RepairTable(COIDManager& ids) {
  std::unordered_set<LONG> seen;
  std::vector<OID*> doubled;
  for (OID* oid : ids.GetOIDs()) {
    if (!seen.insert(oid->ID).second) doubled.push_back(oid);
  }
  for (OID* oid : doubled) ids.Remove(oid);
  ids.ReSort();
  for (OID* oid : doubled) {
    if (oid->Object == nullptr) continue;
    oid->ID = ids.QuerySoftID();
    ids.AddOID(oid);
  }
}

/// One object leaves each ring, and its place in it.
void BreakRings(CZDocument& document) {
  const auto rings = OwnerRings(document);
  if (rings.empty()) return;
  const ManagerLists lists(document);
  for (const auto& ring : rings) {
    const ZRefPtr<IZDMObject> object = ring.front();
    for (const auto& [manager, position] : lists.Of(object)) manager->RemoveAt(position);
    Adopt(document, object);
  }
}

/// The place in the list of the owner counts, else the first one.
void SettleOwner(CZDocument& document, IZDMObject* object, const ManagerLists& lists) {
  const std::vector<ManagerLists::Place>& places = lists.Of(object);
  if (places.empty()) return Adopt(document, object);
  auto kept = std::ranges::find_if(places, [&](const ManagerLists::Place& place) {
    return place.manager->GetOID() == object->GetOwnerOID();
  });
  if (kept == places.end()) kept = places.begin();
  for (auto place = places.begin(); place != places.end(); ++place) {
    if (place != kept) place->manager->RemoveAt(place->position);
  }
  object->SetOwnerOID(kept->manager->GetOID());
}

}  // namespace

std::vector<Finding> Repair(CZDocument& document) {
  std::vector<Finding> repaired = Audit(document);
  std::erase_if(repaired, [](const Finding& finding) { return !finding.canBeRepaired; });
  if (repaired.empty()) return repaired;

  RepairTable(*document.GetOIDManager());
  BreakRings(document);
  const ManagerLists lists(document);
  const std::vector<OID*> oids = document.GetOIDManager()->GetOIDs();
  for (const OID* oid : oids) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    const std::vector<ManagerLists::Place>& places = lists.Of(oid->Object);
    const bool isSound =
        places.size() == 1 && places[0].manager->GetOID() == oid->Object->GetOwnerOID();
    if (!isSound) SettleOwner(document, oid->Object, lists);
  }
  document.ForgetStrays();
  document.SetModified(true);
  return repaired;
}

}  // namespace zdm
