#include "zdm/identity/CPIDManager.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObject.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace {

constexpr unsigned int kAllPaths = 1;
constexpr unsigned int kValidPaths = 2;
constexpr unsigned int kInvalidPaths = 3;

template <class Records>
std::size_t HashOf(const Records& records) {
  std::size_t hash = 14695981039346656037U;
  for (const OID* record : records) {
    hash = (hash ^ reinterpret_cast<std::size_t>(record)) * 1099511628211U;
    hash ^= hash >> 29;  // addresses differ in few low bits
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
  byID_.clear();
  byHash_.clear();
  dropped_.splice(dropped_.end(), PIDList);
}

PID* CPIDManager::GetPIDByID(const LONG& id) const {
  const auto found = byID_.find(id);
  return found != byID_.end() ? found->second : nullptr;
}

template <class Records>
PID* CPIDManager::Find(const Records& records) const {
  const auto [first, last] = byHash_.equal_range(HashOf(records));
  const auto found =
      std::find_if(first, last, [&](const auto& entry) { return entry.second->IsSame(records); });
  return found != last ? found->second : nullptr;
}

template <class Records>
PID* CPIDManager::Query(const Records& records) {
  if (PID* pooled = Find(records)) return pooled;
  auto path = std::make_unique<PID>(NextID());
  path->OIDs.assign(records.begin(), records.end());
  Pool(path.get());
  LastPID = path->ID;
  return path.release();
}

LONG CPIDManager::NextID() const {
  if (LastPID == std::numeric_limits<LONG>::max()) throw CAtlException(E_FAIL);
  return LastPID + 1;
}

/// Adds `path` to the end of the pool; of equal paths the first stays the one that is found.
void CPIDManager::Pool(PID* path) {
  const std::size_t hash = HashOf(path->OIDs);
  PIDList.push_back(path);
  try {
    if (Find(path->OIDs) == nullptr) byHash_.emplace(hash, path);
    byID_.emplace(path->ID, path);
  } catch (...) {
    const auto [first, last] = byHash_.equal_range(hash);
    const auto entry =
        std::find_if(first, last, [&](const auto& other) { return other.second == path; });
    if (entry != last) byHash_.erase(entry);
    PIDList.pop_back();
    throw;
  }
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
  return object != nullptr ? Find(std::list<OID*>{object->GetOID()}) : nullptr;
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
  return object != nullptr ? Query(std::list<OID*>{object->GetOID()}) : nullptr;
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
    Pool(path.get());
    LastPID = std::max(LastPID, path.release()->ID);
  }
  return true;
}
