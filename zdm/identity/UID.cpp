#include "zdm/identity/UID.h"

#include "platform/geometry/SubID.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObject.h"

#include <algorithm>
#include <utility>

namespace {

PID* Pooled(IZDatabase* db, const std::vector<OID*>& records) {
  CPIDManager* pool = db != nullptr ? db->GetPIDManager() : nullptr;
  return pool != nullptr ? pool->QueryPID(records) : nullptr;
}

OID* RecordOf(IZDMObject* object) { return object != nullptr ? object->GetOID() : nullptr; }

bool IsLive(const OID* record) { return record != nullptr && record->JudgeStatus(ZOS_VALID); }

}  // namespace

// The constructors delegate, so that what is stored already goes when the rest fails.

UID::UID(IZDatabase* db, const std::vector<OID*>* selfPath, const std::vector<OID*>* refPath,
         IZDMObject* object, const ::SubID* sub)
    : UID() {
  ::CID cid(nullptr, nullptr, RecordOf(object));
  if (refPath != nullptr && !refPath->empty()) cid.RefPID = Pooled(db, *refPath);
  if (selfPath != nullptr && !selfPath->empty()) cid.SelfPID = Pooled(db, *selfPath);
  SetCID(&cid);
  SetSubID(sub);
}

UID::UID(IZDatabase* db, IZObject* refOwner, IZDMObject* object, const ::SubID* sub) : UID() {
  ::CID cid(nullptr, nullptr, RecordOf(object));
  if (auto* owner = zdm::ViewAs<IZDMObject>(refOwner)) cid.RefPID = Pooled(db, {owner->GetOID()});
  SetCID(&cid);
  SetSubID(sub);
}

UID::UID(const UID& other) : UID() { CopyFrom(&other); }

UID& UID::operator=(const UID& other) {
  if (this != &other) CopyFrom(&other);
  return *this;
}

UID::~UID() { Release(); }

void UID::Release() {
  delete std::exchange(SubID, nullptr);
  delete std::exchange(CID, nullptr);
}

void UID::SetSubID(const ::SubID* sub) {
  if (sub == SubID) return;
  ::SubID* copy = sub != nullptr ? sub->Clone() : nullptr;
  delete std::exchange(SubID, copy);
}

void UID::SetCID(const ::CID* cid) {
  if (cid == CID) return;
  ::CID* copy = cid != nullptr ? cid->Clone() : nullptr;
  delete std::exchange(CID, copy);
}

void UID::CopyFrom(const UID* other) {
  SetSubID(other != nullptr ? other->SubID : nullptr);
  SetCID(other != nullptr ? other->CID : nullptr);
}

UID* UID::Clone() const { return new UID(*this); }

void UID::SetReltnOID(OID* oid) {
  if (oid == nullptr) {
    SetCID(nullptr);
    return;
  }
  if (CID == nullptr) CID = new ::CID;
  CID->RefPID = nullptr;
  CID->ReltnOID = oid;
}

void UID::SetReltnObj(IZObject* object) { SetReltnOID(RecordOf(zdm::ViewAs<IZDMObject>(object))); }

IZDMObject* UID::GetReltnObject() const {
  const OID* target = GetReltnOID();
  return target != nullptr ? target->Object : nullptr;
}

IZDMObject* UID::GetValidObject(bool acceptAffected) const {
  IZDMObject* object = GetReltnObject();
  if (object == nullptr) return nullptr;
  if (acceptAffected && object->JudgeStatus(ZOS_AFFECTED)) return object;
  return object->IsObjectValid() ? object : nullptr;
}

void UID::SetValidObjStatus(LONG status) {
  OID* target = GetReltnOID();
  if (IsLive(target)) target->SetStatus(status, 0);
}

bool UID::IsValid() const {
  return IsLive(GetReltnOID()) && (CID->RefPID == nullptr || CID->RefPID->IsValid());
}

bool UID::IsSame(const UID* other) const {
  if (other == this) return true;
  if (other == nullptr || (CID == nullptr) != (other->CID == nullptr) ||
      (SubID == nullptr) != (other->SubID == nullptr)) {
    return false;
  }
  if (CID != nullptr &&
      (CID->ReltnOID != other->CID->ReltnOID || CID->RefPID != other->CID->RefPID ||
       CID->SelfPID != other->CID->SelfPID)) {
    return false;
  }
  return SubID == nullptr || SubID->IsSame(other->SubID);
}

bool UID::IsSameRootToRefPID(unsigned short count, KID** path) const {
  if (CID == nullptr || CID->RefPID == nullptr) return count == 0;
  const std::list<OID*>& records = CID->RefPID->OIDs;
  return records.size() == count &&
         (count == 0 || std::equal(records.begin(), records.end(), path));
}

void UID::ExpandCID(IZDMObjColl* coll) const {
  if (CID != nullptr) CID->ExpandCID(coll);
}

void UID::RemoveOIDOnPID(OID* oid) {
  if (CID != nullptr) CID->RemoveOIDOnPID(oid);
}

bool UID::lessCID::operator()(const UID* a, const UID* b) const {
  const ::CID* left = a != nullptr ? a->CID : nullptr;
  const ::CID* right = b != nullptr ? b->CID : nullptr;
  if (left == nullptr || right == nullptr) return left == nullptr && right != nullptr;
  return ::CID::Less(left, right);
}
