// A stored path table over records 1 to 64: what loads is found by its IDs and by its records, and
// a second pass through a stream changes nothing.
#include "tests/support/ByteStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr LONG kRecords = 64;
  constexpr std::size_t kCompared = 256;  // paths that are looked up; each costs a walk to check
  COIDManager ids;
  ids.Init();
  for (LONG id = 1; id <= kRecords; ++id) ids.AddOID(new OID(0, 0, id, nullptr));
  ids.SetIDRange();

  CPIDManager pool;
  zdm::test::ByteStream in(std::vector<BYTE>(data, data + size));
  static_cast<void>(pool.Load(&in, &ids));
  Require(pool.GetPIDs().size() <= size / 8);
  std::size_t compared = 0;
  for (const PID* path : pool.GetPIDs()) {
    if (++compared > kCompared) break;
    Require(pool.FindPID(path) == FirstSame(pool, *path));
    Require(pool.GetPIDByID(path->ID) == FirstWithID(pool, path->ID));
  }

  zdm::test::ByteStream out;
  pool.Save(&out);
  const std::vector<BYTE> saved = out.GetBytes();
  zdm::test::ByteStream again(saved);
  CPIDManager second;
  Require(second.Load(&again, &ids) && again.GetBytesLeft() == 0);
  zdm::test::ByteStream rewritten;
  second.Save(&rewritten);
  Require(rewritten.GetBytes() == saved);
  return 0;
}
