// Which records stay in the table: those not deleted, and those that have an object.
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgr.h"

#include <algorithm>
#include <functional>

LONG COIDManager::Clean() {
  std::vector<OID*> kept;
  std::ranges::copy_if(GetOIDs(), std::back_inserter(kept),
                       [](const OID* oid) { return !oid->JudgeStatus(ZOS_DELETED); });
  Replace(std::move(kept));
  if (auto* manager = zdm::ViewAs<IZDMObjMgr>(GetRootObject())) {
    manager->RemoveStatusObjects(ZOS_DELETED);
  }
  return 0;
}

void COIDManager::AssertValid() {
  std::vector<OID*> before = GetOIDs();  // a copy, as objects may list others
  auto* database = zdm::ViewAs<IZDatabase>(GetRootObject());
  std::vector<OID*> kept;
  for (OID* oid : before) {
    const ZRefPtr<IZDMObject> object = oid->Object;
    if (object == nullptr) continue;
    kept.push_back(oid);
    if (oid->JudgeStatus(ZOS_VALID)) object->AssertValid(database);
  }
  if (kept.empty()) return;

  const std::vector<OID*>& now = GetOIDs();
  if (now != before) {
    std::ranges::sort(before, std::less<OID*>());
    std::vector<OID*> added;
    std::ranges::copy_if(now, std::back_inserter(added), [&](OID* oid) {
      return !std::ranges::binary_search(before, oid, std::less<OID*>());
    });
    // New hard IDs are below, new soft ones above all others.
    const auto soft = std::ranges::find_if(added, [](const OID* oid) { return oid->ID > 0; });
    kept.insert(kept.begin(), added.begin(), soft);
    kept.insert(kept.end(), soft, added.end());
  }
  Replace(std::move(kept));
}
