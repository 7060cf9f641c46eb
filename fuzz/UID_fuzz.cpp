// Stored references, alone and in arrays: what loads is written to the bytes it came from, as far
// as the tables know its IDs; damage throws and leaves the reference as it was.
#include "fuzz/Fuzz.h"
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"

#include <memory>

namespace {

using namespace zdm::test;

void One(const std::vector<BYTE>& bytes, IZDatabase* db) {
  UID uid;
  uid.SetReltnOID(db->GetOIDByID(1));
  const std::unique_ptr<UID> before(uid.Clone());
  ByteStream in(bytes);
  if (!Loads([&] { uid.Load(&in, db, true); })) return Require(uid.IsSame(before.get()));
  const std::vector<BYTE> saved = SavedBytes(uid, db, true);
  Require(saved.size() == in.GetPosition());
  UID again;
  ByteStream second(saved);
  again.Load(&second, db, true);
  Require(again.IsSame(&uid) && SavedBytes(again, db, true) == saved);
  static_cast<void>(uid.IsValid());
}

void Many(const std::vector<BYTE>& bytes, IZDatabase* db) {
  std::vector<UID*> uids;
  ByteStream in(bytes);
  Loads([&] { UID::Load(uids, &in, db, true); });
  Require(uids.size() <= bytes.size() / 2);
  for (const UID* uid : uids) delete uid;
}

}  // namespace

ZDM_FUZZ(bytes) {
  TestDatabase database;
  IZDatabase* db = &database;
  std::vector<OID*> path;
  for (LONG id = 1; id <= 4; ++id) {
    auto* record = new OID(0, 0, id, nullptr);
    database.oids.AddOID(record);
    path.push_back(record);
    database.pids.QueryPID(path);
  }
  One(bytes, db);
  Many(bytes, db);
}
