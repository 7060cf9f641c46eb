// New IDs for copies, and what leads their references over: copying, merging, and the reference
// manager of an object.
#include "zdm/framework/CreateAs.h"
#include "zdm/host/eZMergeOption.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/IZReltnCollector.h"
#include "zdm/relations/ZReltnVisitorRecord.h"

#include <unordered_set>

namespace {

constexpr LONG kRefMgrReltn = 0x08000000;  // status of the relation to a reference manager

LONGLONG FirstOf(IZDMObjMgr& manager, bool validOnly) {
  return validOnly ? manager.GetValidHeadPosition() : manager.GetHeadPosition();
}

IZDMObject* NextOf(IZDMObjMgr& manager, LONGLONG& pos, bool validOnly) {
  return validOnly ? manager.GetValidNext(pos) : manager.GetNext(pos);
}

/// Calls `visit` for `top` and everything below it, managers before their objects, in list order.
/// Each is met once, so that managers listed in each other come to an end.
template <class Visit>
void ForEachBelow(IZDMObject* top, bool validOnly, Visit visit) {
  struct Level {
    ZRefPtr<IZDMObjMgr> manager;
    LONGLONG next;
  };
  std::vector<Level> levels;
  std::unordered_set<const IZDMObject*> met;
  const auto enter = [&](IZDMObject* object) {
    auto* manager = zdm::ViewAs<IZDMObjMgr>(object);
    if (manager != nullptr || !levels.empty()) {
      if (!met.insert(object).second) return;
    }
    visit(object);
    if (manager != nullptr) levels.push_back({manager, FirstOf(*manager, validOnly)});
  };
  for (enter(top); !levels.empty();) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZDMObject* child = NextOf(*level.manager, level.next, validOnly);
    if (child != nullptr) enter(child);
  }
}

/// The first relation of the object that leads to its reference manager; null without one.
ZRefPtr<IZRelation> RefMgrReltnOf(IZDMObject* object) {
  if (object == nullptr || !object->JudgeStatus(ZOS_HASREFMGR)) return nullptr;
  const auto relations = zdm::NewOf<IZReltnColl, CZReltnColl>();
  auto* collector = zdm::ViewAs<IZReltnCollector>(relations.Get());
  collector->SetReltnType(static_cast<eZRelation>(kRefMgrReltn));
  object->VisitReferences(object, collector);
  return relations->GetHead();
}

}  // namespace

LONG COIDManager::AssignNewID(OID* oid) {
  if (oid->isListed_) oid->table_->Remove(oid);
  Keep(oid);
  const LONG former = oid->ID;
  oid->ID = QuerySoftID();
  AddOID(oid);
  return former;
}

// Copying.

void COIDManager::QueryNewPID(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added) {
  ForEachBelow(object, false, [&](IZDMObject* each) {
    OID* oid = each->GetOID();
    if (oid == nullptr) return;
    each->SetStatus(ZOS_ATTACHED);
    each->SetStatus(ZOS_VALID);
    const LONG former = AssignNewID(oid);
    map->AddMapIDPair(former, oid->ID);
    added->AddTail(oid->Object);
  });
}

void COIDManager::CloneItemEx(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added) {
  const ZRefPtr<IZDMObject> copy = zdm::CloneAs<IZDMObject>(object);
  if (copy != nullptr) QueryNewPID(map, copy, added);
}

void COIDManager::CloneEx(IZReltnMapID* map, IZDMObject* object, IZDMObjColl* added) {
  ForEachBelow(object, true, [&](IZDMObject* each) {
    if (ProgressMeter != nullptr) ProgressMeter->Step(1);
    CloneItemEx(map, each, added);
  });
}

LONG COIDManager::MapPIDForCopy(IZDMObject* object, IZDatabase* db, COIDManager* ids,
                                std::list<IZDMObject*>& pending) {
  OID* owner = ids->GetOwnerPIDByID(GetObjOwnerID(object));
  object->SetOwnerOID(owner);
  auto* manager = zdm::ViewAs<IZDMObjMgr>(object);
  if (IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr) {
    const OID* found = db->GetOIDByID(static_cast<LONG>(current->GetID()));
    if (found != nullptr && found->Object != nullptr) {
      manager->SetCurrent(found->Object);
    } else {
      pending.push_back(object);
    }
  }
  ZReltnVisitorMapID visitor;
  visitor.Initialize(db);
  object->VisitReferences(object, &visitor);
  object->SetStatus(ZOS_ATTACHED);
  object->SetStatus(ZOS_VALID);
  if (static_cast<LONG>(object->GetID()) <= 0) return 0;
  auto* list = owner != nullptr ? zdm::ViewAs<IZDMObjMgr>(owner->Object) : nullptr;
  if (list == nullptr) return 0;
  list->AttachTail(object);
  object->Release();
  return 0;
}

// Merging.

LONG COIDManager::MapPIDForMerge(IZReltnMapID* map, IZDMObject* object, IZDatabase* db,
                                 int remapOwner) {
  COIDManager* ids = db->GetOIDManager();
  IZDMObject* owner = object->GetOwner();
  if (remapOwner == 1 && owner != nullptr && !owner->JudgeStatus(ZOS_LOADING)) {
    object->SetOwnerOID(ids->GetOwnerPIDByID(map->MapID(owner)));
  }
  auto* manager = zdm::ViewAs<IZDMObjMgr>(object);
  if (IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr) {
    const OID* found = ids->GetOIDByID(map->MapID(current));
    if (found != nullptr) manager->SetCurrent(found->Object);
  }
  object->VisitReferences(object, map);
  return 0;
}

void COIDManager::MergeMgr(IZDMObjMgr* src, IZDMObjMgr* dst, IZMergeMapTool* tool,
                           IZDMObjColl* added, IZDMObjColl* replaced, IZDMObject* srcNode,
                           IZDMObject* dstNode) {
  struct Level {
    ZRefPtr<IZDMObjMgr> source;
    ZRefPtr<IZDMObjMgr> target;
    LONGLONG next;
  };
  std::vector<Level> levels;
  std::unordered_set<const IZDMObjMgr*> entered;
  const auto enter = [&](IZDMObjMgr* source, IZDMObjMgr* target) {
    if (!entered.insert(source).second) return false;
    levels.push_back({source, target, source->GetValidHeadPosition()});
    return true;
  };
  const auto pair = [&](IZDMObject* s, IZDMObject* d) {
    tool->AddMapIDPair(s, d);
    tool->MeterProgress();
  };
  for (enter(src, dst); !levels.empty();) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      if (!levels.empty()) tool->MeterProgress();  // the nested managers are done
      continue;
    }
    IZDMObject* s = level.source->GetValidNext(level.next);
    const bool isSpecial = s == srcNode;
    IZDMObject* d = isSpecial ? dstNode : level.target->FindObject(s);
    if (d == nullptr) {
      tool->AddItem(s, added);
      continue;
    }
    const BYTE option = d != dstNode ? tool->GetMergeOption(s, d)
                                     : static_cast<BYTE>(isSpecial ? ZMO_MERGE : ZMO_ADD);
    auto* nested = zdm::ViewAs<IZDMObjMgr>(s);
    if (option == ZMO_ADD) {
      tool->AddItem(s, added);
    } else if (option == ZMO_SAME) {
      pair(s, d);
    } else if (option == ZMO_REPLACE && nested == nullptr) {
      tool->AddMapIDPair(s, d);
      replaced->AddTail(zdm::CloneAs<IZDMObject>(d));
      d->CopyFrom(s, zdm::kCopyMode);
      tool->MeterProgress();
    } else if (option == ZMO_MERGE && nested != nullptr) {
      auto* target = zdm::ViewAs<IZDMObjMgr>(d);
      if (target == nullptr) continue;
      tool->AddMapIDPair(s, d);
      if (isSpecial) {
        tool->MergeCurrentNode(nested, target, added, replaced);
      } else if (enter(nested, target)) {
        continue;  // and the step when it is done
      }
      tool->MeterProgress();
    }
  }
}

// The reference manager of an object.

IZDMObjMgr* COIDManager::GetRefMgr(IZDMObject* object) {
  const ZRefPtr<IZRelation> relation = RefMgrReltnOf(object);
  if (relation == nullptr) return nullptr;
  const auto found = zdm::NewOf<IZDMObjColl, CZDMObjColl>();
  ZReltnVisitorRecord recorder;
  recorder.GetRecordObjects(relation, found);
  return zdm::ViewAs<IZDMObjMgr>(found->GetHead());
}

void COIDManager::SetRefMgr(IZDMObject* object, OID* oldMgr, OID* newMgr) {
  const ZRefPtr<IZRelation> relation = RefMgrReltnOf(object);
  if (relation == nullptr || newMgr == nullptr || newMgr->Object == nullptr) return;
  ZReltnVisitorMapID visitor;
  visitor.Initialize(newMgr->Object->GetDatabase());
  visitor.AddMapIDPair(oldMgr, newMgr);
  relation->Accept(nullptr, nullptr, &visitor);
}
