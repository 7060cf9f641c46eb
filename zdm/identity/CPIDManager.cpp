#include "zdm/identity/CPIDManager.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObject.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

constexpr unsigned int kAllPaths = 1;
constexpr unsigned int kValidPaths = 2;
constexpr unsigned int kInvalidPaths = 3;

template <class Records>
std::size_t HashOf(const Records& records) {
  std::size_t hash = 14695981039346656037U;
  for (const OID* record : records) {
    hash = (hash ^ reinterpret_cast<std::size_t>(record)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32;  // places are named by the low bits, in which addresses differ least
  }
  return hash;
}

std::list<OID*> RecordsOf(IZOptPath* path) { return PID(0, path).OIDs; }

}  // namespace

CPIDManager::~CPIDManager() {
  for (const PID* path : PIDList) delete path;
  for (const PID* path : dropped_) delete path;
}

void CPIDManager::Init() {
  LastPID = 0;
  places_.clear();
  byID_.clear();
  byFarID_.clear();
  dropped_.splice(dropped_.end(), PIDList);
}

PID* CPIDManager::GetPIDByID(const LONG& id) const {
  const auto index = static_cast<std::size_t>(id);
  if (id >= 0 && index < byID_.size() && byID_[index] != nullptr) return byID_[index];
  const auto found = byFarID_.find(id);
  return found != byFarID_.end() ? found->second : nullptr;
}

/// The place of the path with these records, or the free one where it would go.
template <class Records>
std::size_t CPIDManager::PlaceOf(const Records& records, std::size_t hash) const {
  for (std::size_t place = hash;; ++place) {
    place &= places_.size() - 1;
    const auto& [otherHash, path] = places_[place];
    if (path == nullptr || (otherHash == hash && std::ranges::equal(path->OIDs, records))) {
      return place;
    }
  }
}

template <class Records>
PID* CPIDManager::Find(const Records& records) const {
  return places_.empty() ? nullptr : places_[PlaceOf(records, HashOf(records))].path;
}

template <class Records>
PID* CPIDManager::Query(const Records& records) {
  if (PID* pooled = Find(records)) return pooled;
  auto path = std::make_unique<PID>(NextID());
  path->OIDs.assign(records.begin(), records.end());
  PID* const result = path.get();
  Pool(std::move(path));
  LastPID = result->ID;
  return result;
}

LONG CPIDManager::NextID() const {
  if (LastPID == std::numeric_limits<LONG>::max()) throw CAtlException(E_FAIL);
  return LastPID + 1;
}

/// Adds `path` to the end of the pool; of equal paths the first stays the one that is found.
void CPIDManager::Pool(std::unique_ptr<PID> path) {
  std::list<PID*> link{path.get()};
  MakeRoom();
  NoteID(path.get());  // the last that may fail
  const std::size_t hash = HashOf(path->OIDs);
  Place& place = places_[PlaceOf(path->OIDs, hash)];
  if (place.path == nullptr) place = {hash, path.get()};
  static_cast<void>(path.release());
  PIDList.splice(PIDList.end(), link);
}

/// For one more path.
void CPIDManager::MakeRoom() {
  if (places_.size() > 2 * PIDList.size() + 1) return;
  std::vector<Place> places(std::max<std::size_t>(16, 2 * places_.size()));
  places.swap(places_);
  for (const Place& old : places) {
    if (old.path != nullptr) places_[PlaceOf(old.path->OIDs, old.hash)] = old;
  }
}

void CPIDManager::NoteID(PID* path) {
  if (GetPIDByID(path->ID) != nullptr) return;
  const auto index = static_cast<std::size_t>(path->ID);
  if (path->ID < 0 || index > 2 * PIDList.size() + 64) {
    byFarID_.emplace(path->ID, path);
    return;
  }
  if (index >= byID_.size()) byID_.resize(index + 1);
  byID_[index] = path;
}

PID* CPIDManager::FindPID(const PID* path) const {
  return path != nullptr ? Find(path->OIDs) : nullptr;
}

PID* CPIDManager::FindPID(const std::vector<OID*>& records) const { return Find(records); }
PID* CPIDManager::FindPID(const std::list<OID*>& records) const { return Find(records); }

PID* CPIDManager::FindPID(IZOptPath* path) const {
  return path != nullptr ? Find(RecordsOf(path)) : nullptr;
}

PID* CPIDManager::FindPID(IZDMObject* object) const {
  return object != nullptr ? Find(std::array{object->GetOID()}) : nullptr;
}

PID* CPIDManager::QueryPID(const PID* path) {
  return path != nullptr ? Query(path->OIDs) : nullptr;
}

PID* CPIDManager::QueryPID(const std::vector<OID*>& records) { return Query(records); }
PID* CPIDManager::QueryPID(const std::list<OID*>& records) { return Query(records); }

PID* CPIDManager::QueryPID(IZOptPath* path) {
  return path != nullptr ? Query(RecordsOf(path)) : nullptr;
}

PID* CPIDManager::QueryPID(IZDMObject* object) {
  return object != nullptr ? Query(std::array{object->GetOID()}) : nullptr;
}

PID* CPIDManager::QueryPID(const PID* base, IZObject* last) {
  auto* object = zdm::ViewAs<IZDMObject>(last);
  if (object == nullptr) return nullptr;
  std::list<OID*> records = PID(base).OIDs;
  records.push_back(object->GetOID());
  return Query(records);
}

LONG CPIDManager::GetValidLIDCount() const {
  return static_cast<LONG>(
      std::ranges::count_if(PIDList, [](const PID* path) { return path->Valid == 1; }));
}

void CPIDManager::NormalizeValidity(const unsigned int& mode) const {
  for (const PID* path : PIDList) {
    const bool isChosen = mode == kAllPaths || (mode == kValidPaths && path->Valid == 1) ||
                          (mode == kInvalidPaths && path->Valid == 0);
    if (isChosen) static_cast<void>(path->IsValid());
  }
}

// Path table, little-endian.
//   offset  size    field
//        0     4    number n of paths whose Valid is 1
//        4  8 + 4k  n PID records, in pool order
void CPIDManager::Save(IZStream* stream) const {
  NormalizeValidity(kAllPaths);
  const LONG count = GetValidLIDCount();
  stream->Write(&count, sizeof(count));
  for (const PID* path : PIDList) {
    if (path->Valid == 1) path->Save(stream);
  }
}

bool CPIDManager::Load(IZStream* stream, COIDManager* ids) {
  LONG count = 0;
  bool isComplete = false;
  stream->Read(&count, sizeof(count), &isComplete);
  LastPID = 0;
  if (!isComplete || count < 0) return false;
  for (; count > 0; --count) {
    auto path = std::make_unique<PID>(0);
    try {
      path->Load(stream, ids);
    } catch (const CAtlException&) {
      return false;
    }
    LastPID = std::max(LastPID, path->ID);
    Pool(std::move(path));
  }
  return true;
}
