#include "zdm/identity/PID.h"

#include "platform/core/IZStream.h"
#include "platform/geometry/GeMatrix.h"
#include "platform/ole/CAtlException.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"

#include <algorithm>

PID::PID(const LONG& id) : KID(id) {}

PID::PID(const LONG& id, IZOptPath* path) : KID(id) {
  LONGLONG pos = path->GetHeadPosition();
  while (pos != 0) OIDs.push_back(path->GetNext(pos)->GetOID());
}

PID::PID(const PID* other) {
  if (other == nullptr) return;
  ID = other->ID;
  OIDs = other->OIDs;
}

bool PID::IsSame(const PID* other) const { return other != nullptr && OIDs == other->OIDs; }

bool PID::IsSame(const std::vector<OID*>& records) const {
  return std::equal(OIDs.begin(), OIDs.end(), records.begin(), records.end());
}

bool PID::IsSame(const std::list<OID*>& records) const { return OIDs == records; }

bool PID::IsSame(IZOptPath* path) const {
  if (path == nullptr || static_cast<std::size_t>(path->GetCount()) != OIDs.size()) return false;
  LONGLONG pos = path->GetHeadPosition();
  for (const OID* record : OIDs) {
    if (pos == 0 || path->GetNext(pos)->GetOID() != record) return false;
  }
  return true;
}

bool PID::IsExistOID_SameID(const OID* oid) const {
  return oid != nullptr && std::ranges::any_of(OIDs, [&](const OID* record) {
           return record != nullptr && record->ID == oid->ID;
         });
}

bool PID::IsDirectRelateTo(const IZDMObject* object) const {
  return object != nullptr && std::ranges::any_of(OIDs, [&](const OID* record) {
           return record != nullptr && record->Object == object;
         });
}

bool PID::IsValid() const { return JudgeStatus(ZOS_VALID); }

void PID::SetStatus(eZObjStatus status) {
  for (OID* record : OIDs) {
    if (record != nullptr) record->SetStatus(status, 0);
  }
}

void PID::ClearStatus(eZObjStatus status) {
  for (OID* record : OIDs) {
    if (record != nullptr) record->ClearStatus(status, 0);
  }
}

bool PID::JudgeStatus(eZObjStatus status) const {
  return std::ranges::all_of(
      OIDs, [&](const OID* record) { return record != nullptr && record->JudgeStatus(status); });
}

void PID::get_SToP(GeMatrix& m) const {
  for (const OID* record : OIDs) {
    if (record == nullptr || record->Object == nullptr) continue;
    GeMatrix placement;
    record->Object->GetTransform(placement);
    placement.MultiRightToSelf(m);
    m = placement;
  }
}

// PID record, 8 + 4n bytes, little-endian.
//   offset  size  field
//        0     4  ID, signed
//        4     4  number n of records
//        8    4n  their IDs, in order; 0 for none
void PID::Save(IZStream* stream) const {
  const auto count = static_cast<LONG>(OIDs.size());
  stream->Write(&ID, sizeof(ID));
  stream->Write(&count, sizeof(count));
  for (const OID* record : OIDs) {
    const LONG id = record != nullptr ? record->ID : 0;
    stream->Write(&id, sizeof(id));
  }
}

void PID::Load(IZStream* stream, COIDManager* ids) {
  LONG pathID = 0;
  LONG count = 0;
  stream->Read(&pathID, sizeof(pathID));
  stream->Read(&count, sizeof(count));
  if (count > 0 && stream->GetBytesLeft() / sizeof(LONG) < static_cast<ULONGLONG>(count)) {
    throw CAtlException(E_FAIL);
  }
  std::list<OID*> found;
  for (; count > 0; --count) {
    LONG id = 0;
    stream->Read(&id, sizeof(id));
    OID* record = ids != nullptr ? ids->GetReferredOID(id) : nullptr;
    if (record != nullptr) found.push_back(record);
  }
  ID = pathID;
  OIDs.splice(OIDs.end(), found);
}
