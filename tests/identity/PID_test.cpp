// When two paths are the same, what a path says of its records, and what a stream carries of it.
#include "zdm/identity/PID.h"

#include "document/CZOptPath.h"
#include "platform/geometry/GeMatrix.h"
#include "tests/identity/Document.h"
#include "tests/identity/Records.h"
#include "zdm/framework/ZRefPtr.h"

namespace {

using namespace zdm::test;

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
