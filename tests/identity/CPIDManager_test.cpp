// Paths, what they say of their records, and the pool: one path for one sequence of records. What
// a stream carries of them.
#include "zdm/identity/CPIDManager.h"

#include "document/CZOptPath.h"
#include "tests/identity/Records.h"
#include "tests/support/Cuts.h"
#include "zdm/identity/PID.h"

#include <algorithm>
#include <limits>

namespace {

using namespace zdm::test;

class Pool : public testing::Test {
 protected:
  using Records = std::vector<OID*>;

  std::vector<LONG> PooledIDs() {
    std::vector<LONG> ids;
    for (const PID* path : pool.GetPIDs()) ids.push_back(path->ID);
    return ids;
  }

  Document db;
  CPIDManager& pool = db->pids;
  ZRefPtr<IZDMObject> a = db->MakeObject();
  ZRefPtr<IZDMObject> b = db->MakeObject();
};

TEST_F(Pool, MakesOnePathForOneSequenceWhateverTheForm) {
  const Records records = {a->GetOID(), b->GetOID()};
  EXPECT_EQ(pool.FindPID(records), nullptr);
  PID* path = pool.QueryPID(records);
  EXPECT_EQ(path->ID, 1);
  const auto objects = zdm::MakeObject<IZOptPath, CZOptPath>();
  objects->Append(a);
  objects->Append(b);
  const PID twin(*path);
  EXPECT_EQ(pool.FindPID(a.Get()), nullptr) << "the path of it alone";
  EXPECT_EQ(pool.FindPID(static_cast<const PID*>(nullptr)), nullptr);
  EXPECT_EQ(pool.QueryPID(static_cast<IZOptPath*>(nullptr)), nullptr);
  EXPECT_EQ(pool.QueryPID(records), path);
  EXPECT_EQ(pool.QueryPID(path->OIDs), path);
  EXPECT_EQ(pool.QueryPID(&twin), path);
  EXPECT_EQ(pool.QueryPID(objects.Get()), path);
  EXPECT_EQ(pool.FindPID(objects.Get()), path);
  PID* head = pool.QueryPID(a.Get());
  EXPECT_EQ(pool.QueryPID(head, b->GetIZObject()), path);
  EXPECT_EQ(PooledIDs(), (std::vector<LONG>{1, 2})) << "no ID is spent on a path that exists";
  EXPECT_EQ(pool.GetPIDByID(2), head);
  EXPECT_EQ(pool.GetPIDByID(3), nullptr);
}

TEST_F(Pool, ExtendsAPathByOneObject) {
  PID* one = pool.QueryPID(nullptr, a->GetIZObject());
  EXPECT_EQ(one, pool.FindPID(a.Get()));
  PID* two = pool.QueryPID(one, b->GetIZObject());
  EXPECT_TRUE(two->IsSame(Records{a->GetOID(), b->GetOID()}));
  EXPECT_EQ(two->ID, 2);
  EXPECT_EQ(one->OIDs.size(), 1U) << "the base stays as it is";
  const auto stranger = zdm::MakeObject<IZObject, Stranger>();
  EXPECT_EQ(pool.QueryPID(one, stranger), nullptr);
  EXPECT_EQ(pool.GetPIDs().size(), 2U);
}

TEST_F(Pool, StartsAgainWithoutDeletingPaths) {
  PID* old = pool.QueryPID(a.Get());
  pool.Init();
  EXPECT_EQ(pool.FindPID(a.Get()), nullptr);
  EXPECT_EQ(pool.GetPIDByID(1), nullptr);
  PID* fresh = pool.QueryPID(a.Get());
  EXPECT_NE(fresh, old);
  EXPECT_EQ(fresh->ID, 1);
  EXPECT_TRUE(old->IsSame(fresh)) << "still there for those that point at it";
}

TEST_F(Pool, WritesThePathsWithTheirFlagInPoolOrder) {
  pool.QueryPID(Records{b->GetOID(), a->GetOID()});
  pool.QueryPID(a.Get())->Valid = 0;
  pool.QueryPID(b.Get());
  b->SetObjectValid(false);
  EXPECT_EQ(pool.GetValidLIDCount(), 2);
  for (unsigned int mode = 0; mode < 5; ++mode) pool.NormalizeValidity(mode);
  EXPECT_EQ(pool.GetValidLIDCount(), 2) << "flags do not follow the objects";
  EXPECT_EQ(Written([&](IZStream* stream) { pool.Save(stream); }), Words({2, 1, 2, 2, 1, 3, 1, 2}));
}

TEST_F(Pool, ReadsPathsAndGoesOnAfterTheHighestID) {
  ByteStream stream(Words({3, 4, 2, 1, 99, 9, 1, 2, 2, 0}));
  EXPECT_TRUE(pool.Load(&stream, &db->oids));
  EXPECT_EQ(PooledIDs(), (std::vector<LONG>{4, 9, 2})) << "in stored order";
  EXPECT_EQ(pool.FindPID(a.Get()), pool.GetPIDByID(4)) << "without the unknown record";
  EXPECT_EQ(pool.QueryPID(Records{b->GetOID(), b->GetOID()})->ID, 10);
}

TEST_F(Pool, FindsTheFirstOfEqualPaths) {
  PID* before = pool.QueryPID(a.Get());
  ByteStream stream(Words({3, 1, 1, 1, 7, 1, 2, 7, 1, 2}));
  EXPECT_TRUE(pool.Load(&stream, &db->oids));
  EXPECT_EQ(pool.GetPIDs().size(), 4U) << "all are kept";
  EXPECT_EQ(pool.GetPIDByID(1), before);
  EXPECT_EQ(pool.FindPID(a.Get()), before);
  EXPECT_EQ(pool.GetPIDByID(7), *std::next(pool.GetPIDs().begin(), 2));
  EXPECT_EQ(pool.FindPID(b.Get()), pool.GetPIDByID(7));
}

TEST_F(Pool, FindsIDsOfAnySize) {
  constexpr LONG kLowest = std::numeric_limits<LONG>::min();
  const LONG ids[] = {0, 5000, kLowest, -1, 3, 5000, 0x7FFFFFFF, 66, 400, 3, kLowest};
  Bytes bytes = Words({static_cast<LONG>(std::size(ids))});
  for (const LONG id : ids) bytes = bytes + Words({id, 0});
  ByteStream stream(bytes);
  EXPECT_TRUE(pool.Load(&stream, &db->oids));
  const std::vector<PID*> paths(pool.GetPIDs().begin(), pool.GetPIDs().end());
  for (const PID* path : paths) {
    const auto first = std::ranges::find(paths, path->ID, [](const PID* p) { return p->ID; });
    EXPECT_EQ(pool.GetPIDByID(path->ID), *first) << path->ID;
  }
  for (const LONG id : {1, 2, 65, 401, 4999, -2}) EXPECT_EQ(pool.GetPIDByID(id), nullptr) << id;
  EXPECT_EQ(pool.FindPID(std::vector<OID*>()), paths.front()) << "an empty path is a path";
}

TEST_F(Pool, KeepsTheCompletePathsOfAStreamThatEndsEarly) {
  const auto bytes = Words({2, 4, 1, 1, 9, 2, 1, 2});
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    CPIDManager loaded;
    ByteStream stream(Cut(bytes, size));
    EXPECT_FALSE(loaded.Load(&stream, &db->oids)) << size;
    EXPECT_EQ(loaded.GetPIDs().size(), size >= 16 ? 1U : 0U) << size;
  }
}

TEST_F(Pool, StartsIDsAgainForAnEmptyTable) {
  pool.QueryPID(a.Get());
  for (const LONG count : {0, -3}) {
    ByteStream stream(Words({count}));
    EXPECT_EQ(pool.Load(&stream, &db->oids), count == 0);
  }
  EXPECT_EQ(pool.QueryPID(b.Get())->ID, 1);
}

TEST_F(Pool, RefusesANewPathWhenAllIDsAreTaken) {
  ByteStream stream(Words({1, 0x7FFFFFFF, 1, 1}));
  EXPECT_TRUE(pool.Load(&stream, &db->oids));
  EXPECT_THROW(pool.QueryPID(b.Get()), CAtlException);
  EXPECT_EQ(pool.QueryPID(a.Get())->ID, 0x7FFFFFFF) << "paths that exist are still found";
}

TEST_F(Pool, StaysFastWithManyPaths) {
  constexpr LONG kPaths = 100000;  // 10^10 comparisons if each look-up walked the pool
  std::vector<OID*> records;
  for (LONG id = 3; id < 3 + kPaths; ++id) records.push_back(ListRecord(db->oids, id));
  for (OID* record : records) pool.QueryPID(Records{a->GetOID(), record});
  for (LONG i = 0; i < kPaths; ++i) {
    const PID* path = pool.FindPID(Records{a->GetOID(), records[static_cast<std::size_t>(i)]});
    ASSERT_EQ(path, pool.GetPIDByID(i + 1));
  }
}

class Path : public testing::Test {
 protected:
  Path() {
    for (LONG id : {3, 5, 6}) ListRecord(ids, id);
  }
  OID* Record(LONG id) { return ids.GetOIDByID(id); }
  PID MakePath(LONG id, std::initializer_list<LONG> records) {
    PID path(id);
    for (LONG record : records) path.OIDs.push_back(Record(record));
    return path;
  }

  COIDManager ids;
};

TEST_F(Path, IsSameForTheSameRecordsInOrder) {
  const PID path = MakePath(7, {3, 5});
  const struct {
    const char* what;
    PID other;
    bool same;
  } rows[] = {
      {"another ID", MakePath(8, {3, 5}), true},  {"another order", MakePath(7, {5, 3}), false},
      {"a shorter one", MakePath(7, {3}), false}, {"a longer one", MakePath(7, {3, 5, 6}), false},
      {"an empty one", MakePath(7, {}), false},
  };
  for (const auto& row : rows) {
    const std::vector<OID*> records(row.other.OIDs.begin(), row.other.OIDs.end());
    EXPECT_EQ(path.IsSame(&row.other), row.same) << row.what;
    EXPECT_EQ(path.IsSame(row.other.OIDs), row.same) << row.what;
    EXPECT_EQ(path.IsSame(records), row.same) << row.what;
  }
  EXPECT_FALSE(path.IsSame(static_cast<const PID*>(nullptr)));
}

TEST_F(Path, IsBuiltFromAndComparedWithAPathOfObjects) {
  const Document db;
  const auto outer = db->MakeObject();
  const auto inner = db->MakeObject();
  const auto objects = zdm::MakeObject<IZOptPath, CZOptPath>();
  objects->Append(outer);
  objects->Append(inner);
  const PID path(4, objects);
  EXPECT_EQ(path.OIDs, (std::list<OID*>{outer->GetOID(), inner->GetOID()}));
  EXPECT_TRUE(path.IsSame(objects));
  EXPECT_TRUE(path.IsDirectRelateTo(inner));
  EXPECT_FALSE(path.IsDirectRelateTo(db));
  EXPECT_FALSE(path.IsDirectRelateTo(nullptr));
  objects->Append(inner);
  EXPECT_FALSE(path.IsSame(objects));
}

TEST_F(Path, CopiesEitherWithOrWithoutItsFlag) {
  PID path = MakePath(7, {3, 5});
  path.Valid = 0;
  EXPECT_EQ(PID(path).Valid, 0);
  EXPECT_EQ(PID(&path).Valid, 1);
  EXPECT_EQ(PID(&path).ID, 7);
  EXPECT_EQ(PID(static_cast<const PID*>(nullptr)).ID, 0);
  const OID stranger(0, 0, 5, nullptr);
  EXPECT_TRUE(path.IsExistOID_SameID(&stranger));
  EXPECT_FALSE(path.IsExistOID_SameID(Record(6)));
}

TEST_F(Path, HasAStatusThatAllItsRecordsHave) {
  PID path = MakePath(7, {3, 5});
  EXPECT_FALSE(path.IsValid());
  Record(3)->SetStatus(ZOS_VALID, 0);
  EXPECT_FALSE(path.IsValid());
  path.SetStatus(ZOS_VALID);
  EXPECT_TRUE(path.IsValid());
  EXPECT_TRUE(Record(5)->JudgeStatus(ZOS_VALID));
  path.ClearStatus(ZOS_VALID);
  EXPECT_FALSE(Record(3)->JudgeStatus(ZOS_VALID));
  EXPECT_TRUE(PID(1).IsValid()) << "an empty path";
  path.OIDs.push_back(nullptr);
  path.SetStatus(ZOS_VALID);
  EXPECT_FALSE(path.IsValid()) << "a missing record";
}

TEST_F(Path, WritesItsIDAndThoseOfItsRecordsAndReadsWhatTheTableLists) {
  const PID saved = MakePath(7, {3, 6});
  EXPECT_EQ(Written([&](IZStream* stream) { saved.Save(stream); }), Words({7, 2, 3, 6}));
  PID path(LONG{0});
  ByteStream stream(Words({8, 3, 5, 99, 6}));
  path.Load(&stream, &ids);
  EXPECT_EQ(path.ID, 8);
  EXPECT_EQ(path.OIDs, (std::list<OID*>{Record(5), Record(6)}));
  EXPECT_EQ(stream.GetBytesLeft(), 0U);
}

TEST_F(Path, StaysAsItIsWhenTheStreamIsDamaged) {
  PID path = MakePath(1, {3});
  const auto load = [&](IZStream* stream) { path.Load(stream, &ids); };
  ExpectShortStreamsThrow(Words({7, 2, 5, 6}), load);
  ByteStream hostile(Words({7, 0x7FFFFFFF, 5}));
  EXPECT_THROW(load(&hostile), CAtlException);
  EXPECT_EQ(path.ID, 1);
  EXPECT_EQ(path.OIDs.size(), 1U);
  ByteStream negative(Words({7, -1, 5}));
  load(&negative);
  EXPECT_EQ(path.ID, 7) << "a negative length is none";
  EXPECT_EQ(path.OIDs.size(), 1U);
}

}  // namespace
