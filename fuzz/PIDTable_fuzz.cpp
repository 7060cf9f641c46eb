// A stored path table over records 1 to 64: what loads is found by its IDs and by its records, and
// a second pass through a stream changes nothing.
#include "fuzz/Fuzz.h"
#include "tests/support/ByteStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

namespace {

using namespace zdm::test;

const PID* FirstSame(const CPIDManager& pool, const PID& path) {
  for (const PID* other : pool.GetPIDs()) {
    if (other->IsSame(&path)) return other;
  }
  return nullptr;
}

const PID* FirstWithID(const CPIDManager& pool, LONG id) {
  for (const PID* other : pool.GetPIDs()) {
    if (other->ID == id) return other;
  }
  return nullptr;
}

}  // namespace

ZDM_FUZZ(bytes) {
  constexpr LONG kRecords = 64;
  constexpr std::size_t kCompared = 256;  // paths that are looked up; each costs a walk to check
  COIDManager ids;
  ids.Init();
  for (LONG id = 1; id <= kRecords; ++id) ids.AddOID(new OID(0, 0, id, nullptr));
  ids.SetIDRange();

  CPIDManager pool;
  ByteStream in(bytes);
  static_cast<void>(pool.Load(&in, &ids));
  Require(pool.GetPIDs().size() <= bytes.size() / 8);
  std::size_t compared = 0;
  for (const PID* path : pool.GetPIDs()) {
    if (++compared > kCompared) break;
    Require(pool.FindPID(path) == FirstSame(pool, *path));
    Require(pool.GetPIDByID(path->ID) == FirstWithID(pool, path->ID));
  }

  const std::vector<BYTE> saved = SavedBytes(pool);
  ByteStream again(saved);
  CPIDManager second;
  Require(second.Load(&again, &ids) && again.GetBytesLeft() == 0);
  Require(SavedBytes(second) == saved);
}
