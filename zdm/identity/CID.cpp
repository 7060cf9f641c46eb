#include "zdm/identity/CID.h"

#include "platform/core/IZStream.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObject.h"

namespace {

struct Entry {
  LONG self;
  LONG ref;
  LONG target;
};
static_assert(sizeof(Entry) == 12, "references are written as they lie");

bool SamePath(const PID* a, const PID* b) {
  return a == nullptr || b == nullptr ? a == b : a->IsSame(b);
}

/// For different records: less, by ID; a record is less than none.
bool LessRecord(const KID* a, const KID* b) {
  if (a == nullptr || b == nullptr) return a != nullptr;
  return a->ID < b->ID;
}

LONG StoredID(const PID* path) { return path != nullptr && path->Valid == 1 ? path->ID : 0; }

PID* Without(PID* path, const OID* oid, CPIDManager& pool) {
  if (path == nullptr) return nullptr;
  std::list<OID*> records = path->OIDs;
  records.remove_if([&](const OID* record) { return record == oid; });
  return pool.QueryPID(records);
}

}  // namespace

bool CID::IsSame(const CID* other) const {
  return other != nullptr && ReltnOID == other->ReltnOID && SamePath(RefPID, other->RefPID) &&
         SamePath(SelfPID, other->SelfPID);
}

bool CID::IsDirectRelateTo(const IZDMObject* object) const {
  if (object == nullptr) return false;
  return (ReltnOID != nullptr && ReltnOID->Object == object) ||
         (SelfPID != nullptr && SelfPID->IsDirectRelateTo(object)) ||
         (RefPID != nullptr && RefPID->IsDirectRelateTo(object));
}

void CID::ExpandCID(IZDMObjColl* coll) const {
  if (SelfPID != nullptr) coll->AddOwners(SelfPID->OIDs);
  if (RefPID != nullptr) coll->AddOwners(RefPID->OIDs);
  if (ReltnOID != nullptr) coll->AddTail(ReltnOID->Object);
}

void CID::RemoveOIDOnPID(OID* oid) {
  if (oid == nullptr || oid->Object == nullptr) return;
  IZDatabase* db = oid->Object->GetDatabase();
  CPIDManager* pool = db != nullptr ? db->GetPIDManager() : nullptr;
  if (pool == nullptr) return;
  RefPID = Without(RefPID, oid, *pool);
  SelfPID = Without(SelfPID, oid, *pool);
}

bool CID::Less(const CID* a, const CID* b) {
  if (a->RefPID != b->RefPID) return LessRecord(a->RefPID, b->RefPID);
  if (a->SelfPID != b->SelfPID) return LessRecord(a->SelfPID, b->SelfPID);
  return a->ReltnOID != b->ReltnOID && LessRecord(a->ReltnOID, b->ReltnOID);
}

// CID record, 12 bytes, little-endian. A path that is null or whose Valid is not 1 is stored as 0.
//   offset  size  field
//        0     4  ID of SelfPID
//        4     4  ID of RefPID
//        8     4  ID of ReltnOID, 0 for none
void CID::Save(IZStream* stream) const {
  const Entry entry = {StoredID(SelfPID), StoredID(RefPID), ReltnOID != nullptr ? ReltnOID->ID : 0};
  stream->Write(&entry, sizeof(entry));
}

void CID::Load(IZStream* stream, CPIDManager* pids, COIDManager* ids) {
  Entry entry;
  stream->Read(&entry, sizeof(entry));
  const auto path = [&](LONG id) {
    return id != 0 && pids != nullptr ? pids->GetPIDByID(id) : nullptr;
  };
  SelfPID = path(entry.self);
  RefPID = path(entry.ref);
  ReltnOID = ids != nullptr ? ids->GetReferredOID(entry.target) : nullptr;
}
