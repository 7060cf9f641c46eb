#include "zdm/identity/ZReltnVisitorMapID.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/host/IZMergeStrategy.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/PID.h"

ZDM_OBJECT_BODY(ZReltnVisitorMapID)

// The walk.

bool ZReltnVisitorMapID::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr || reltn->JudgeReltnStatus(kPassedOver)) return false;
  return reltn->Accept(root, owner, this);
}

bool ZReltnVisitorMapID::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  if (*oid == nullptr || ids_ == nullptr) return false;
  OID* found = ids_->GetOIDByID(MapID(*oid));
  if (found != nullptr || !usesOrigin_) *oid = found;
  return false;
}

bool ZReltnVisitorMapID::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) {
  if (*pid == nullptr || paths_ == nullptr) return false;
  const PID& former = **pid;
  *pid = nullptr;
  const auto path = zdm::CreateAs<IZOptPath>(zdm::kOptPathClass);
  if (path == nullptr) return false;
  for (OID* oid : former.OIDs) {
    MapOID(root, owner, nullptr, &oid);
    if (oid == nullptr || oid->Object == nullptr) return false;
    path->Append(oid->Object);
  }
  *pid = paths_->QueryPID(path);
  return false;
}

// The map.

void ZReltnVisitorMapID::Initialize(IZDatabase* db) {
  database_ = db;
  ids_ = db != nullptr ? db->GetOIDManager() : nullptr;
  paths_ = db != nullptr ? db->GetPIDManager() : nullptr;
}

void ZReltnVisitorMapID::ClearMap() { map_.Clear(); }
LONG ZReltnVisitorMapID::MapID(LONG id) { return map_.Of(id); }
LONG ZReltnVisitorMapID::MapID(IZDMObject* object) { return map_.Of(zdm::IDMap::IDOf(object)); }
LONG ZReltnVisitorMapID::MapID(OID* oid) { return map_.Of(zdm::IDMap::IDOf(oid)); }
void ZReltnVisitorMapID::get_UseOriginIfMapFailed(bool* out) { *out = usesOrigin_; }
void ZReltnVisitorMapID::put_UseOriginIfMapFailed(bool use) { usesOrigin_ = use; }

LONG ZReltnVisitorMapID::AddMapIDPair(LONG from, LONG to) {
  map_.Add(from, to);
  return 0;
}

LONG ZReltnVisitorMapID::AddMapIDPair(IZDMObject* from, IZDMObject* to) {
  return AddMapIDPair(zdm::IDMap::IDOf(from), zdm::IDMap::IDOf(to));
}

LONG ZReltnVisitorMapID::AddMapIDPair(OID* from, OID* to) {
  return AddMapIDPair(zdm::IDMap::IDOf(from), zdm::IDMap::IDOf(to));
}

// The merge.

void ZReltnVisitorMapID::AddItem(IZDMObject* object, IZDMObjColl* added) {
  if (ids_ != nullptr) ids_->CloneEx(this, object, added);
}

BYTE ZReltnVisitorMapID::GetMergeOption(IZDMObject* source, IZDMObject* target) {
  return database_ != nullptr ? database_->GetMergeOption(source, target) : BYTE{0};
}

void ZReltnVisitorMapID::MergeCurrentNode(IZDMObjMgr* source, IZDMObjMgr* target,
                                          IZDMObjColl* added, IZDMObjColl* replaced) {
  if (database_ == nullptr) return;
  ZRefPtr<IZMergeStrategy> strategy;
  database_->GetMergeStrategy(target, added, strategy.Out());
  if (strategy != nullptr) strategy->Merge(source, target, this, added, replaced);
}

void ZReltnVisitorMapID::MeterProgress() {
  if (meter_ != nullptr) meter_->Step(1);
}

void ZReltnVisitorMapID::SetMeterProgress(IZProgressMeter* meter) { meter_ = meter; }
IZProgressMeter* ZReltnVisitorMapID::GetMeterProgress() { return meter_; }
