// How references compare, what lies on their paths, and what a stream carries of them.
#include "zdm/identity/CID.h"

#include "tests/identity/Records.h"
#include "tests/support/Cuts.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/PID.h"

namespace {

using namespace zdm::test;

TEST(CID, IsTheSameOverPathsOfTheSameRecords) {
  OID target(0, 0, 1, nullptr);
  OID other(0, 0, 1, nullptr);
  PID path(1);
  PID twin(2);
  path.OIDs = twin.OIDs = {&target};
  PID longer(3);
  longer.OIDs = {&target, &target};
  const CID base(&path, &path, &target);
  const struct {
    const char* what;
    CID other;
    bool same;
  } rows[] = {
      {"twin paths", {&twin, &twin, &target}, true},
      {"another target of the same ID", {&path, &path, &other}, false},
      {"no own path", {nullptr, &path, &target}, false},
      {"no path to the target", {&path, nullptr, &target}, false},
      {"another path", {&longer, &path, &target}, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(base.IsSame(&row.other), row.same) << row.what;
    EXPECT_EQ(row.other.IsSame(&base), row.same) << row.what << ", exchanged";
  }
  EXPECT_FALSE(base.IsSame(nullptr));
}

TEST(CID, ComparesFieldByFieldUpToTheFirstThatDiffers) {
  OID one(0, 0, 1, nullptr);
  OID two(0, 0, 2, nullptr);
  PID first(10);
  PID second(20);
  PID twin(10);  // another path of the first one's ID
  const struct {
    const char* what;
    CID a, b;
    bool less, greater;
  } rows[] = {
      {"equal", {&first, &first, &one}, {&first, &first, &one}, false, false},
      {"RefPID first", {&second, &first, &two}, {&first, &second, &one}, true, false},
      {"then SelfPID", {&first, &first, &two}, {&second, &first, &one}, true, false},
      {"then ReltnOID", {&first, &first, &one}, {&first, &first, &two}, true, false},
      {"a path before none", {nullptr, &first, &two}, {nullptr, nullptr, &one}, true, false},
      {"a target before none", {nullptr, nullptr, &one}, {}, true, false},
      {"stops at equal IDs", {&first, &first, &one}, {&twin, &first, &two}, false, false},
      {"stops at equal IDs of RefPID",
       {&first, &twin, &one},
       {&second, &first, &two},
       false,
       false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CID::Less(&row.a, &row.b), row.less) << row.what;
    EXPECT_EQ(CID::lessCID()(&row.b, &row.a), row.greater) << row.what << ", exchanged";
  }
}

TEST(CID, IsDirectlyRelatedToItsTargetAndTheObjectsOnItsPaths) {
  const Document db;
  const auto self = db->MakeObject();
  const auto through = db->MakeObject();
  const auto target = db->MakeObject();
  const CID cid(db->pids.QueryPID(self), db->pids.QueryPID(through), target->GetOID());
  for (IZDMObject* object : {self.Get(), through.Get(), target.Get()}) {
    EXPECT_TRUE(cid.IsDirectRelateTo(object));
  }
  EXPECT_FALSE(cid.IsDirectRelateTo(db->MakeObject()));
  EXPECT_FALSE(CID().IsDirectRelateTo(nullptr));
}

TEST(CID, LeavesARecordOutOfItsPaths) {
  const Document db;
  const auto kept = db->MakeObject();
  const auto gone = db->MakeObject();
  OID* const keptOID = kept->GetOID();
  OID* const goneOID = gone->GetOID();
  PID* const pooled = db->pids.QueryPID(std::vector<OID*>{keptOID});
  PID* const full = db->pids.QueryPID(std::vector<OID*>{goneOID, keptOID, goneOID});
  CID cid(nullptr, full, keptOID);
  cid.RemoveOIDOnPID(goneOID);
  EXPECT_EQ(cid.RefPID, pooled);
  EXPECT_EQ(cid.SelfPID, nullptr);
  EXPECT_EQ(db->pids.FindPID(full), full) << "the old path stays in the pool";

  OID stranger(0, 0, 5, nullptr);
  cid.RemoveOIDOnPID(&stranger);
  EXPECT_EQ(cid.RefPID, pooled) << "a record without object belongs to no document";
}

class CIDStream : public testing::Test {
 protected:
  CIDStream()
      : self(db->pids.QueryPID(db->MakeObject(nullptr, 3))),
        ref(db->pids.QueryPID(db->MakeObject(nullptr, 4))) {}

  CID Load(Bytes bytes) {
    CID cid;
    ByteStream stream(std::move(bytes));
    cid.Load(&stream, &db->pids, &db->oids);
    return cid;
  }

  Document db;
  PID* self;
  PID* ref;
};

TEST_F(CIDStream, WritesThreeIDsAPathWithoutItsFlagAsNone) {
  const CID cid(self, ref, db->GetOIDByID(4));
  const auto saved = [&] { return Written([&](IZStream* stream) { cid.Save(stream); }); };
  EXPECT_EQ(saved(), Words({1, 2, 4}));
  EXPECT_TRUE(Load(saved()).IsSame(&cid));
  self->Valid = 0;
  EXPECT_EQ(saved(), Words({0, 2, 4}));
  EXPECT_EQ(Load(saved()).SelfPID, nullptr);
  EXPECT_EQ(Written([](IZStream* stream) { CID().Save(stream); }), Words({0, 0, 0}));
}

TEST_F(CIDStream, ReadsUnknownIDsAsNoneUnlessTheTableKeepsThem) {
  const CID unknown = Load(Words({77, 2, 99}));
  EXPECT_TRUE(unknown.SelfPID == nullptr && unknown.RefPID == ref && unknown.ReltnOID == nullptr);
  EXPECT_EQ(Load(Words({0, 0, -1})).ReltnOID, db->GetOID()) << "the root";

  db->oids.KeepReferred();
  const OID* kept = Load(Words({0, 0, 99})).ReltnOID;
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->ID, 99);
  EXPECT_EQ(db->oids.GetOIDByID(99), nullptr) << "not before all are listed";
  db->oids.ListReferred();
  EXPECT_EQ(db->oids.GetOIDByID(99), kept);
}

TEST_F(CIDStream, KeepsTheReferenceWhenTheStreamEndsEarly) {
  CID cid(self, ref, db->GetOID());
  ExpectShortStreamsThrow(Words({0, 0, 0}),
                          [&](IZStream* stream) { cid.Load(stream, &db->pids, &db->oids); });
  EXPECT_EQ(cid.SelfPID, self);
  EXPECT_EQ(cid.ReltnOID, db->GetOID());
}

}  // namespace
