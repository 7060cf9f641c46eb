// A small document for tests: a root object with an ID table and a path table. It owns no objects;
// a test holds those it makes.
#pragma once

#include "document/CZDMPlainObject.h"
#include "document/CZPlainSingleReltn.h"
#include "tests/support/ByteStream.h"
#include "tests/support/TestClasses.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZPersistStrategy.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/CPIDManager.h"

#include <utility>
#include <vector>

ZDM_TEST_CLASS(TestDatabase, IZObject, IZDMObject, IZRelation, IZDatabase)

namespace zdm::test {

/// Registers the document's classes. The root has ID -1 and owns itself. Lives on the stack, longer
/// than the objects in it.
class TestDatabase : public IZDMObjectImpl<IZDMObject>, public IZObjectImpl<IZDatabase> {
  ZDM_OBJECT(TestDatabase)
 public:
  TestDatabase();

  COIDManager* GetOIDManager() override { return &oids; }
  CPIDManager* GetPIDManager() override { return &pids; }
  OID* GetOIDByID(LONG id) override { return oids.GetOIDByID(id); }
  void OnStateChanged(LONG) override { ++changes; }
  /// Makes plain objects of type 7, and no others.
  void CreateByType(BYTE type, IZDMObject** out) override;
  IZPersistStrategy* GetPersistStrategy() override {
    ++timesAskedForStrategy;
    return strategy;
  }
  void GetMergeStrategy(IZDMObjMgr*, IZDMObjColl*, IZMergeStrategy** out) override {
    *out = nullptr;
  }
  BYTE GetMergeOption(IZDMObject*, IZDMObject*) override { return 0; }
  IZOptPath* GetOptPath() override { return nullptr; }

  /// Makes the root the owner of `object`, which is listed, attached and valid then.
  /// @param id  0: the next soft ID.
  void Add(IZDMObject* object, LONG id = 0);
  /// A new plain object, added.
  ZRefPtr<IZDMObject> MakeObject(const OLECHAR* name = nullptr, LONG id = 0);

  COIDManager oids;
  CPIDManager pids;
  ZRefPtr<IZPersistStrategy> strategy;
  int timesAskedForStrategy = 0;
  int changes = 0;
};

/// A plain relation to `target`, which may be null.
ZRefPtr<IZSingleReltn> RelationTo(IZDMObject* target);

/// The bytes that Save writes.
std::vector<BYTE> BytesOf(IZRelation& object, IZDatabase* database = nullptr);
/// Loads `object`. Returns the number of bytes read.
ULONGLONG LoadBytes(IZRelation& object, std::vector<BYTE> bytes, IZDatabase* database = nullptr);

/// The 32-bit number at `offset`.
LONG NumberAt(const std::vector<BYTE>& bytes, std::size_t offset);

}  // namespace zdm::test
