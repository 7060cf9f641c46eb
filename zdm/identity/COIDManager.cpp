// The list itself: which records are in it, in which order, under which IDs they are found, and how
// long they are kept.
#include "zdm/identity/COIDManager.h"

#include "platform/ole/CAtlException.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"

#include <algorithm>
#include <limits>

namespace {

constexpr LONG kRootID = -1;
constexpr LONG kLastID = std::numeric_limits<LONG>::max();

/// For `count` more elements, which then cannot fail to be added.
template <class T>
void MakeRoom(std::vector<T>& elements, std::size_t count = 1) {
  const std::size_t needed = elements.size() + count;
  if (needed > elements.capacity()) elements.reserve(needed + elements.size() + 8);
}

}  // namespace

COIDManager::COIDManager() = default;

COIDManager::COIDManager(const COIDManager& other) : COIDManager() { *this = other; }

COIDManager& COIDManager::operator=(const COIDManager& other) {
  if (this == &other) return *this;
  std::list<UnresolvedObject> unresolved = other.Unresolved;
  Replace(other.GetOIDs());
  Unresolved.swap(unresolved);
  HardCounter = other.HardCounter;
  SoftCounter = other.SoftCounter;
  RootOID = other.RootOID;
  OwnerCache = other.OwnerCache;
  ProgressMeter = other.ProgressMeter;
  return *this;
}

COIDManager::~COIDManager() { ReleaseRecords(); }

void COIDManager::ReleaseRecords() {
  Replace({});
  RootOID = nullptr;
  // Deleting a record runs no code of ours or of an object.
  for (OID* oid : kept_) {
    if (oid->table_ == this) oid->table_ = nullptr;
    oid->Release();
  }
  kept_.clear();
  for (const auto& [id, oid] : referred_) OID::GiveUp(oid, nullptr);
  referred_.clear();
}

void COIDManager::Init() {
  Replace({});
  HardCounter = 1;
  SoftCounter = 0;
}

LONG COIDManager::QueryHardID() {
  if (HardCounter == kLastID) throw CAtlException(E_FAIL);
  return -++HardCounter;
}

LONG COIDManager::QuerySoftID() {
  if (SoftCounter == kLastID) throw CAtlException(E_FAIL);
  return ++SoftCounter;
}

void COIDManager::SetIDRange() {
  Settle();
  if (OIDVect.empty()) return;
  const LONG first = OIDVect.front()->ID;
  // A table without negative IDs starts hard IDs at -2, like an empty one.
  HardCounter = first < 0 ? -std::max(first, -kLastID) : 1;
  SoftCounter = std::max<LONG>(OIDVect.back()->ID, 0);
  OwnerCache = nullptr;
}

bool COIDManager::AreCountersBehind() const {
  return std::ranges::any_of(GetOIDs(), [this](const OID* oid) {
    return oid->ID > SoftCounter || (oid->ID < 0 && oid->ID < -HardCounter);
  });
}

void COIDManager::AddOID(OID* oid) {
  if (oid->isListed_) oid->table_->Remove(oid);
  MakeRoom(OIDVect, front_.size() + 1);
  MakeRoom(ids_, front_.size() + 1);
  List(oid);
  OIDVect.push_back(oid);
  ids_.push_back(oid->ID);
}

void COIDManager::Remove(OID* oid) {
  if (oid == nullptr) return;
  Settle();
  const std::size_t index = IndexOf(oid);
  if (index == OIDVect.size()) return;
  const auto offset = static_cast<std::ptrdiff_t>(index);
  OIDVect.erase(OIDVect.begin() + offset);
  ids_.erase(ids_.begin() + offset);
  ++revision_;
  Unlist(oid);
  if (OwnerCache == oid) OwnerCache = nullptr;
}

void COIDManager::Replace(std::vector<OID*> oids) {
  Settle();
  std::vector<LONG> ids(oids.size());
  std::ranges::transform(oids, ids.begin(), [](const OID* oid) { return oid->ID; });
  for (OID* oid : OIDVect) Unlist(oid);
  OIDVect.swap(oids);
  ids_.swap(ids);
  ++revision_;
  for (OID* oid : OIDVect) {
    if (oid->table_ == this) oid->isListed_ = true;
  }
  OwnerCache = nullptr;
}

void COIDManager::SetRootOID(OID* oid) {
  if (oid != nullptr) Keep(oid);
  RootOID = oid;
}

IZDMObject* COIDManager::GetRootObject() const {
  return RootOID != nullptr ? RootOID->Object : nullptr;
}

/// From now on the record lives at least as long as this table.
void COIDManager::Keep(OID* oid) {
  if (oid->table_ == this) return;
  kept_.push_back(oid);
  OID::Take(oid);
  oid->table_ = this;
}

void COIDManager::List(OID* oid) {
  Keep(oid);
  oid->isListed_ = true;
}

bool COIDManager::Keeps(const OID* oid) const { return oid->table_ == this; }

void COIDManager::Unlist(OID* oid) {
  if (oid->table_ == this) oid->isListed_ = false;
}

/// Brings the hard IDs handed out since the last walk to the front of the list. There is room for
/// them, since tables are walked where nothing may fail.
void COIDManager::Settle() const {
  if (front_.empty()) return;
  ids_.insert(ids_.begin(), front_.size(), 0);
  std::transform(front_.rbegin(), front_.rend(), ids_.begin(),
                 [](const OID* oid) { return oid->ID; });
  OIDVect.insert(OIDVect.begin(), front_.rbegin(), front_.rend());
  front_.clear();
  ++revision_;
}

const std::vector<OID*>& COIDManager::GetOIDs() const {
  Settle();
  return OIDVect;
}

ULONGLONG COIDManager::GetRevision() const {
  Settle();
  return revision_;
}

OID* COIDManager::At(std::size_t index) const {
  const std::size_t pending = front_.size();
  return index < pending ? front_[pending - 1 - index] : OIDVect[index - pending];
}

OID* COIDManager::GetOIDByID(const LONG& id) const {
  if (id == 0) return nullptr;
  if (id == kRootID) return RootOID;
  if (!ids_.empty() && id >= ids_.front() && id <= ids_.back()) {
    // IDs ascend by at least 1 a place, so the wanted one is no further from either end than its
    // distance to the ID there: in a table without gaps that is one place.
    const auto size = static_cast<LONGLONG>(ids_.size());
    const LONGLONG low = std::max<LONGLONG>(0, size - 1 - (LONGLONG{ids_.back()} - id));
    const LONGLONG high = std::min<LONGLONG>(size, LONGLONG{id} - ids_.front() + 1);
    if (low < high) {
      const auto found = std::lower_bound(ids_.begin() + low, ids_.begin() + high, id);
      const auto index = static_cast<std::size_t>(found - ids_.begin());
      if (index < ids_.size() && OIDVect[index]->ID == id) return OIDVect[index];
    }
  }
  return SearchRecords(id);
}

/// The search over the records themselves: it sees IDs that were changed in listed records, and
/// those that are not in front yet.
OID* COIDManager::SearchRecords(LONG id) const {
  const auto size = static_cast<LONGLONG>(front_.size() + OIDVect.size());
  const auto idAt = [&](LONGLONG index) { return At(static_cast<std::size_t>(index))->ID; };
  if (size == 0 || (id > 0 && id > idAt(size - 1))) return nullptr;
  LONGLONG high = size - 1;
  if (id < 0) {
    if (id < idAt(0)) return nullptr;
    if (HardCounter < size) high = LONGLONG{HardCounter} - 1;  // no more places for hard IDs
  }
  for (LONGLONG low = 0; low <= high;) {
    const LONGLONG middle = (low + high) / 2;
    const LONG found = idAt(middle);
    if (found == id) return At(static_cast<std::size_t>(middle));
    if (id < found) {
      high = middle - 1;
    } else {
      low = middle + 1;
    }
  }
  return nullptr;
}

/// Place of the record in the settled list; its size when it is not there.
std::size_t COIDManager::IndexOf(const OID* oid) const {
  const auto place = std::lower_bound(ids_.begin(), ids_.end(), oid->ID) - ids_.begin();
  const auto index = static_cast<std::size_t>(place);
  if (index < OIDVect.size() && OIDVect[index] == oid) return index;
  if (oid->table_ == this && !oid->isListed_) return OIDVect.size();
  return static_cast<std::size_t>(std::ranges::find(OIDVect, oid) - OIDVect.begin());
}

OID* COIDManager::GetReferredOID(const LONG& id) {
  OID* const oid = GetOIDByID(id);
  if (oid != nullptr || !keepsReferred_ || id == 0 || id == kRootID) return oid;
  const auto [at, isNew] = referred_.try_emplace(id, nullptr);
  if (at->second == nullptr) at->second = OID::Take(new OID(0, 0, id, nullptr));
  return at->second;
}

void COIDManager::ListReferred() {
  keepsReferred_ = false;
  if (referred_.empty()) return;
  while (!referred_.empty()) {
    OID* oid = referred_.begin()->second;
    if (oid != nullptr) AddOID(oid);
    OID::GiveUp(oid, nullptr);  // the table has it now
    referred_.erase(referred_.begin());
  }
  ReSort();
}

OID* COIDManager::GetOwnerPIDByID(const LONG& id) {
  if (id == 0) return nullptr;
  if (id == kRootID) return RootOID;
  if (OwnerCache == nullptr || OwnerCache->ID != id) OwnerCache = GetOIDByID(id);
  return OwnerCache;
}

void COIDManager::AssignID(IZDMObject* object, bool hard) {
  if (object->JudgeStatus(ZOS_ATTACHED)) return;
  const LONG id = hard ? QueryHardID() : QuerySoftID();
  OID* oid = object->GetOID();
  if (oid->isListed_) oid->table_->Remove(oid);
  MakeRoom(front_);  // what may fail comes before the object is marked
  MakeRoom(OIDVect, front_.size() + 1);
  MakeRoom(ids_, front_.size() + 1);
  Keep(oid);
  object->SetStatus(ZOS_ATTACHED);
  object->SetStatus(ZOS_VALID);
  object->SetID(static_cast<ULONG>(id));
  oid = object->GetOID();
  if (hard) {
    List(oid);
    front_.push_back(oid);
  } else {
    AddOID(oid);
  }
}
