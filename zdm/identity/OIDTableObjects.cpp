// What the ID table does to objects and asks of them: IDs for whole trees, binding, status, other
// documents.
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjMgr.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

IZDMObjMgr* OwnerManagerOf(IZDMObject* object) {
  return zdm::ViewAs<IZDMObjMgr>(object->GetOwner());
}

/// The objects of a manager by ID, the first of several.
using ObjectsByID = std::unordered_map<ULONG, ZRefPtr<IZDMObject>>;

ObjectsByID MembersByID(IZDMObjMgr& manager) {
  ObjectsByID objects;
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    IZDMObject* object = manager.GetNext(pos);
    if (object != nullptr) objects.try_emplace(object->GetID(), object);
  }
  return objects;
}

}  // namespace

void COIDManager::AssignItemID(IZDMObject* object, const bool& hard, bool recurse) {
  struct Level {
    IZDMObjMgr* manager;  // borrowed: a new one may have count 0 still
    LONGLONG next;
  };
  AssignID(object, hard);
  if (!recurse) return;
  std::vector<Level> levels;
  std::unordered_set<IZDMObjMgr*> entered;  // a second time would find every object attached
  const auto enter = [&](IZDMObject* member) {
    auto* manager = zdm::ViewAs<IZDMObjMgr>(member);
    if (manager == nullptr || !entered.insert(manager).second) return;
    levels.push_back({manager, manager->GetHeadPosition()});
  };
  for (enter(object); !levels.empty();) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZDMObject* child = level.manager->GetNext(level.next);
    if (child == nullptr) continue;
    AssignID(child, hard);
    enter(child);
  }
}

IZDMObject* COIDManager::GetSameIDObj(IZDMObject* object) {
  IZDMObjMgr* manager = OwnerManagerOf(object);
  if (manager == nullptr) return nullptr;
  for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
    IZDMObject* other = manager->GetNext(pos);
    if (other != nullptr && other->GetID() == object->GetID()) return other;
  }
  return nullptr;
}

OID* COIDManager::GetSameInitPID(OID* oid) {
  IZDMObject* object = oid != nullptr ? oid->Object : nullptr;
  if (object == nullptr) return nullptr;
  const auto isSame = [&](const OID* other) {
    return other != nullptr && other->Object != nullptr && object->JudgeSame(other->Object);
  };
  OID* sameID = GetOIDByID(oid->ID);
  if (isSame(sameID)) return sameID;
  for (OID* other : GetOIDs()) {
    if (other->ID > 0) break;
    if (isSame(other)) return other;
  }
  return nullptr;
}

LONG COIDManager::GetObjOwnerID(IZDMObject* object) {
  IZDMObject* owner = object->GetOwner();
  return owner != nullptr ? owner->GetOID()->ID : 0;
}

LONG COIDManager::GetValidOIDCount() const {
  return static_cast<LONG>(std::ranges::count_if(GetOIDs(), [](const OID* oid) {
    return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID);
  }));
}

IZDMObject* COIDManager::GetOptPathBottomObj(IZDatabase* db) {
  IZOptPath* path = db != nullptr ? db->GetOptPath() : nullptr;
  return path != nullptr ? path->GetBottomObject() : nullptr;
}

int COIDManager::RegisterSelf(const LONG& id, IZDMObject* object) {
  OID* oid = GetOIDByID(id);
  if (oid == nullptr) return 0;
  oid->Object = object;
  object->SetOID(oid, false);
  return 1;
}

int COIDManager::RegisterOwner(const LONG& id, IZDMObject* object) {
  OID* oid = GetOIDByID(id);
  if (oid == nullptr) return 0;
  object->SetOwnerOID(oid);
  return 1;
}

void COIDManager::SetOwnerOID(const std::list<IZDMObject*>& objects, OID* owner) {
  for (IZDMObject* object : objects) object->SetOwnerOID(owner);
}

void COIDManager::SetupOwner() {
  // A copy, since adding an object to a manager may run code of the host.
  const std::vector<OID*> oids = GetOIDs();
  // The creation reference of what ReadStream could not attach is the one it keeps.
  std::unordered_set<IZDMObject*> unresolved;
  for (const UnresolvedObject& record : Unresolved) unresolved.insert(record.Object);
  for (OID* oid : oids) {
    IZDMObject* object = oid->Object;
    if (object == nullptr) continue;
    IZDMObjMgr* manager = object->GetOwner() != object ? OwnerManagerOf(object) : nullptr;
    if (manager == nullptr) {
      oid->ClearStatus(ZOS_ATTACHED, 0);
      oid->ClearStatus(ZOS_VALID, 0);
      continue;
    }
    if (!oid->JudgeStatus(ZOS_ATTACHED)) {
      if (oid->ID < 0) {
        manager->AttachHead(object);
      } else {
        manager->AttachTail(object);
      }
      if (!unresolved.contains(object)) object->Release();
      if (oid->Object == nullptr) continue;  // the manager did not want it
      oid->SetStatus(ZOS_ATTACHED, 0);
    }
    oid->SetStatus(ZOS_VALID, 0);
  }
}

void COIDManager::SetAllStatus(const LONG& status) {
  for (OID* oid : GetOIDs()) oid->SetStatus(status, 0);
}

void COIDManager::ClearAllStatus(const LONG& status) {
  for (OID* oid : GetOIDs()) {
    if (oid->Object != nullptr) oid->ClearStatus(status, 0);
  }
}

void COIDManager::ValidCurrentObj(IZDMObjMgr* manager) {
  if (!manager->IsEmpty()) manager->SetCurrent(manager->GetHead());
}

void COIDManager::SetObjEx(IZDMObjColl* objects) {
  std::unordered_map<IZDMObjMgr*, ObjectsByID> indexes;
  for (LONGLONG pos = objects->GetHeadPosition(); pos != 0;) {
    IZDMObject* object = objects->GetNext(pos);
    IZDMObjMgr* manager = object != nullptr ? OwnerManagerOf(object) : nullptr;
    if (manager == nullptr) continue;
    auto index = indexes.find(manager);
    if (index == indexes.end()) index = indexes.emplace(manager, MembersByID(*manager)).first;
    const auto same = index->second.find(object->GetID());
    if (same == index->second.end()) continue;
    const ZRefPtr<IZDMObject> copy = zdm::CloneAs<IZDMObject>(same->second);
    if (copy == nullptr) continue;
    same->second->CopyFrom(object, zdm::kCopyMode);
    object->CopyFrom(copy, zdm::kCopyMode);
    same->second->Update(nullptr, nullptr);
  }
}
