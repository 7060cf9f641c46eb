#include "document/ManagerLists.h"

#include "document/CZDocument.h"
#include "zdm/identity/OID.h"

#include <unordered_set>

namespace zdm {

ManagerLists::ManagerLists(CZDocument& document) {
  Enter(document);
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    auto* manager = oid->Object != nullptr ? ViewAs<IZDMObjMgr>(oid->Object) : nullptr;
    if (manager != nullptr) Enter(*manager);
  }
}

void ManagerLists::Enter(IZDMObjMgr& manager) {
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    const LONGLONG at = pos;
    if (const IZDMObject* object = manager.GetNext(pos)) places_[object].push_back({&manager, at});
  }
}

const std::vector<ManagerLists::Place>& ManagerLists::Of(const IZDMObject* object) const {
  static const std::vector<Place> kNone;
  const auto found = places_.find(object);
  return found != places_.end() ? found->second : kNone;
}

std::vector<std::vector<IZDMObject*>> OwnerRings(CZDocument& document) {
  std::vector<std::vector<IZDMObject*>> rings;
  std::unordered_set<const IZDMObject*> done = {&document};
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    std::vector<IZDMObject*> path;
    std::unordered_set<const IZDMObject*> onPath;
    IZDMObject* object = oid->Object;
    while (object != nullptr && !done.contains(object) && onPath.insert(object).second) {
      path.push_back(object);
      object = object->GetOwner();
    }
    if (object != nullptr && onPath.contains(object)) {
      rings.emplace_back(std::ranges::find(path, object), path.end());
    }
    done.insert(path.begin(), path.end());
  }
  return rings;
}

}  // namespace zdm
