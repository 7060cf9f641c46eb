// Hostile bytes as a stream of objects, read into a document with a manager, records for a few IDs,
// and a class of its own for records of type 7. Whatever comes of it, the table stays sound: what
// is valid is held by the manager that owns it, and a document saved from it reads back the same.
#include "fuzz/Fuzz.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgr.h"

namespace {

using namespace zdm::test;

constexpr LONG kManager = 1;
constexpr LONG kLastID = 9;

class Database : public TestDatabase {
 public:
  Database() {
    Add(manager, kManager);
    for (LONG id = kManager + 1; id <= kLastID; ++id) oids.AddOID(new OID(0, 0, id, nullptr));
  }

  ZRefPtr<IZDMObjMgr> manager = zdm::CreateAs<IZDMObjMgr>(zdm::ClassRow<CZDMObjMgr>::kClassID);
};

void RequireSound(Database& db) {
  for (OID* oid : db.oids.GetOIDs()) {
    if (oid->Object == nullptr) {
      Require(!oid->JudgeStatus(ZOS_VALID));
      continue;
    }
    Require(oid->Object->GetOID() == oid);
    Require(!oid->JudgeStatus(ZOS_LOADING));
    if (!oid->JudgeStatus(ZOS_VALID) || oid->ID == kManager) continue;
    auto* owner = zdm::ViewAs<IZDMObjMgr>(oid->Object->GetOwner());
    Require(owner != nullptr && owner->Has(oid->Object));
  }
}

/// The records of all objects attached, owners first.
std::vector<BYTE> SaveTree(Database& db) {
  ByteStream stream;
  std::vector<IZDMObjMgr*> managers = {db.manager};
  for (std::size_t i = 0; i < managers.size(); ++i) {
    for (LONGLONG pos = managers[i]->GetHeadPosition(); pos != 0;) {
      IZDMObject* object = managers[i]->GetNext(pos);
      object->Save(&stream, &db);
      if (auto* inner = zdm::ViewAs<IZDMObjMgr>(object)) managers.push_back(inner);
    }
  }
  return stream.GetBytes();
}

/// Objects whose records say all there is to them: plain ones and managers, without attachments.
bool IsSimple(Database& db) {
  for (const OID* oid : db.oids.GetOIDs()) {
    if (oid->Object == nullptr) continue;
    const GUID classId = oid->Object->GetZRID();
    if (!(classId == zdm::ClassRow<CZDMPlainObject>::kClassID) &&
        !(classId == zdm::ClassRow<CZDMObjMgr>::kClassID)) {
      return false;
    }
    if (oid->Object->GetReltnColl() != nullptr) return false;
  }
  return true;
}

/// Managers that own each other hold each other, once they are set up, until somebody empties them.
void BreakRings(Database& db) {
  for (const OID* oid : db.oids.GetOIDs()) {
    const ZRefPtr<IZDMObjMgr> manager = zdm::ViewAs<IZDMObjMgr>(oid->Object);
    if (manager != nullptr && oid->ID != kManager) manager->RemoveAll();
  }
}

}  // namespace

ZDM_FUZZ(bytes) {
  const zdm::CapturedOutput output;
  Database db;
  ByteStream stream(bytes);
  db.oids.ReadStream(&stream);
  RequireSound(db);
  const std::size_t unresolved = db.oids.GetUnresolved().size();
  const LONG valid = db.oids.GetValidOIDCount();

  // A second time every record is bound, unless its object ended.
  stream.Seek(0, STREAM_SEEK_SET);
  db.oids.ReadStream(&stream);
  RequireSound(db);
  Require(db.oids.GetUnresolved().size() >= unresolved && db.oids.GetValidOIDCount() >= valid);

  if (IsSimple(db)) {
    const std::vector<BYTE> saved = SaveTree(db);
    Database again;
    ByteStream source(saved);
    Require(again.oids.ReadStream(&source) == 1);
    Require(SaveTree(again) == saved);
  }

  db.oids.SetupOwner();
  db.oids.AssertValid();
  BreakRings(db);
  db.oids.SetRootOID(db.manager->GetOID());
  db.oids.SetAllStatus(ZOS_DELETED);
  db.oids.Clean();
  Require(db.oids.GetOIDs().empty());
}
