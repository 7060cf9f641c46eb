#include "zdm/model/ManagerMerge.h"

#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/IZMergeMapTool.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjMgr.h"

namespace {

void Step(IZProgressMeter* meter, LONG steps) {
  if (meter != nullptr) meter->Step(steps);
}

}  // namespace

LONG zdm::MergeManagers(IZDMObjMgr& target, IZDMObjMgr* source, IZDMObjColl* added,
                        IZDMObjColl* existing, IZMergeMapTool* mapTool, IZDMObject* sourceNode,
                        IZDMObject* targetNode) {
  if (source == nullptr || source == &target || mapTool == nullptr) return 1;
  if (added == nullptr || existing == nullptr) return 1;
  GUID here = GUID_NULL;
  GUID there = GUID_NULL;
  target.GetClassID(&here);
  source->GetClassID(&there);
  IZDatabase* database = target.GetDatabase();
  if (!(here == there) || database == nullptr || database->GetOIDManager() == nullptr) return 1;
  auto* meter = ViewAs<IZProgressMeter>(&target);
  Step(meter, 2);
  COIDManager::MergeMgr(source, &target, mapTool, added, existing, sourceNode, targetNode);
  RebindMerged(mapTool, database, *added, *existing, meter);
  return 0;
}

void zdm::RebindMerged(IZReltnMapID* map, IZDatabase* database, IZDMObjColl& added,
                       IZDMObjColl& existing, IZProgressMeter* meter) {
  for (LONGLONG pos = added.GetHeadPosition(); pos != 0;) {
    IZDMObject* object = added.GetNext(pos);
    if (object == nullptr) continue;
    COIDManager::MapPIDForMerge(map, object, database, 1);
    object->SetStatus(ZOS_ATTACHED);
    object->SetStatus(ZOS_VALID);
    if (auto* owner = ViewAs<IZDMObjMgr>(object->GetOwner())) owner->AttachTail(object);
    Step(meter, 1);
  }
  for (LONGLONG pos = existing.GetHeadPosition(); pos != 0;) {
    IZDMObject* former = existing.GetNext(pos);
    if (former == nullptr) continue;
    const OID* oid = database->GetOIDManager()->GetOIDByID(static_cast<LONG>(former->GetID()));
    if (oid != nullptr && oid->Object != nullptr) {
      COIDManager::MapPIDForMerge(map, oid->Object, database, 0);
    }
    Step(meter, 1);
  }
}
