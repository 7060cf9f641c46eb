// Stored references, alone and in arrays: what loads is written to the bytes it came from, as far
// as the tables know its IDs; damage throws and leaves the reference as it was.
#include "platform/ole/CAtlException.h"
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace zdm::test;

void Require(bool holds) {
  if (!holds) std::abort();
}

std::vector<BYTE> BytesOf(const UID& uid, IZDatabase* db) {
  ByteStream out;
  uid.Save(&out, db, true);
  return out.GetBytes();
}

void One(const std::vector<BYTE>& bytes, IZDatabase* db) {
  UID uid;
  uid.SetReltnOID(db->GetOIDByID(1));
  const std::unique_ptr<UID> before(uid.Clone());
  ByteStream in(bytes);
  try {
    uid.Load(&in, db, true);
  } catch (const CAtlException&) {
    Require(uid.IsSame(before.get()));
    return;
  }
  const std::vector<BYTE> saved = BytesOf(uid, db);
  Require(saved.size() == in.GetPosition());
  UID again;
  ByteStream second(saved);
  again.Load(&second, db, true);
  Require(again.IsSame(&uid) && BytesOf(again, db) == saved);
  static_cast<void>(uid.IsValid());
}

void Many(const std::vector<BYTE>& bytes, IZDatabase* db) {
  std::vector<UID*> uids;
  ByteStream in(bytes);
  try {
    UID::Load(uids, &in, db, true);
  } catch (const CAtlException&) {
  }
  Require(uids.size() <= bytes.size() / 2);
  for (const UID* uid : uids) delete uid;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TestDatabase database;
  IZDatabase* db = &database;
  std::vector<OID*> path;
  for (LONG id = 1; id <= 4; ++id) {
    auto* record = new OID(0, 0, id, nullptr);
    database.oids.AddOID(record);
    path.push_back(record);
    database.pids.QueryPID(path);
  }
  const std::vector<BYTE> bytes(data, data + size);
  One(bytes, db);
  Many(bytes, db);
  return 0;
}
