// Whether an object may be deleted.
#include "zdm/framework/ZRefPtr.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/relations/ZReltnVisitorIsDirectTo.h"

#include <algorithm>

int COIDManager::JudgeDelete(IZDMObject* object) {
  if (static_cast<LONG>(object->GetID()) < 0) return 0;
  auto* manager = zdm::ViewAs<IZDMObjMgr>(object->GetOwner());
  if (manager == nullptr) return 1;
  if (manager->GetCurrent() == object) return 0;
  if (!object->JudgeOptionAllowed(zdm::kKeptWhileReferenced)) return 1;
  ZReltnVisitorIsDirectTo visitor;
  visitor.Initialize(ZR_DIFFUSIBLE, object);
  const auto keeps = [&](const OID* oid) {
    IZDMObject* other = oid->Object;
    return other != nullptr && other != object && oid->JudgeStatus(ZOS_VALID) &&
           other->JudgeOptionAllowed(zdm::kReferencesCount) &&
           other->VisitReferences(other, &visitor);
  };
  const std::vector<OID*> oids = GetOIDs();  // a copy, as objects may list others
  return std::ranges::any_of(oids, keeps) ? 0 : 1;
}
