// What a stored reference refers to, when two are the same, and what a stream carries of them.
#include "zdm/identity/UID.h"

#include "platform/geometry/SubID.h"
#include "tests/identity/Records.h"
#include "tests/support/Cuts.h"
#include "zdm/identity/PID.h"

#include <memory>

namespace {

using namespace zdm::test;

const SubID kEdge(SubID::kEdge, {4});
const SubID kFace(SubID::kFace, {4});

class Reference : public testing::Test {
 protected:
  using Records = std::vector<OID*>;

  Document db;
  ZRefPtr<IZDMObject> self = db->MakeObject();
  ZRefPtr<IZDMObject> through = db->MakeObject();
  ZRefPtr<IZDMObject> target = db->MakeObject();
  Records selfPath = {self->GetOID()};
  Records refPath = {through->GetOID(), through->GetOID()};
};

TEST_F(Reference, PoolsItsPaths) {
  const UID uid(db, &selfPath, &refPath, target, &kEdge);
  EXPECT_EQ(uid.CID->SelfPID, db->pids.FindPID(selfPath));
  EXPECT_EQ(uid.CID->RefPID, db->pids.FindPID(refPath));
  EXPECT_EQ(uid.GetReltnObject(), target.Get());
  EXPECT_NE(uid.SubID, &kEdge);
  EXPECT_TRUE(kEdge.IsSame(uid.SubID));

  const Records none;
  const UID top(db, nullptr, &none, target, nullptr);
  EXPECT_EQ(top.CID->RefPID, nullptr);
  EXPECT_EQ(top.CID->SelfPID, nullptr);
  EXPECT_EQ(db->pids.GetPIDs().size(), 2U) << "no empty path is pooled";

  const UID direct(db, through->GetIZObject(), target, nullptr);
  EXPECT_TRUE(direct.CID->RefPID->IsSame(Records{through->GetOID()}));
}

TEST_F(Reference, IsCopiedDeeply) {
  const UID uid(db, &selfPath, &refPath, target, &kEdge);
  UID copy(uid);
  EXPECT_NE(copy.CID, uid.CID);
  EXPECT_NE(copy.SubID, uid.SubID);
  EXPECT_TRUE(copy.IsSame(&uid));
  copy.CopyFrom(&copy);
  EXPECT_TRUE(copy.IsSame(&uid)) << "from itself";
  copy.SetCID(copy.CID);
  copy.SetSubID(copy.SubID);
  EXPECT_TRUE(copy.IsSame(&uid)) << "its own parts";
  const std::unique_ptr<UID> clone(uid.Clone());
  EXPECT_TRUE(clone->IsSame(&uid));
  copy.CopyFrom(nullptr);
  EXPECT_EQ(copy.CID, nullptr);
  EXPECT_EQ(copy.SubID, nullptr);
}

TEST_F(Reference, IsTheSameOverTheSamePathsAndParts) {
  const UID base(db, &selfPath, &refPath, target, &kEdge);
  PID unpooled(1);
  unpooled.OIDs = base.CID->RefPID->OIDs;
  UID otherPath(base);
  otherPath.CID->RefPID = &unpooled;
  UID otherPart(base);
  otherPart.SetSubID(&kFace);
  UID whole(base);
  whole.SetSubID(nullptr);
  UID nothing(base);
  nothing.SetCID(nullptr);
  UID otherTarget(base);
  otherTarget.CID->ReltnOID = self->GetOID();
  for (const UID* other : {&otherPath, &otherPart, &whole, &nothing, &otherTarget}) {
    EXPECT_FALSE(base.IsSame(other));
    EXPECT_FALSE(other->IsSame(&base));
  }
  EXPECT_TRUE(base.IsSame(&base));
  EXPECT_TRUE(UID().IsSame(std::make_unique<UID>().get()));
  EXPECT_FALSE(base.IsSame(nullptr));
}

TEST_F(Reference, TurnsToTopLevelButKeepsItsOwnPath) {
  UID uid(db, &selfPath, &refPath, target, nullptr);
  uid.SetReltnOID(through->GetOID());
  EXPECT_EQ(uid.CID->RefPID, nullptr);
  EXPECT_EQ(uid.CID->SelfPID, db->pids.FindPID(selfPath));
  EXPECT_EQ(uid.GetReltnOID(), through->GetOID());
  uid.SetReltnObj(target->GetIZObject());
  EXPECT_EQ(uid.GetReltnOID(), target->GetOID());
  uid.SetReltnObj(zdm::MakeObject<IZObject, Stranger>());
  EXPECT_EQ(uid.CID, nullptr) << "not a data-model object";
  UID fresh;
  fresh.SetReltnOID(target->GetOID());
  EXPECT_EQ(fresh.GetReltnObject(), target.Get());
}

TEST_F(Reference, IsValidWithItsTargetAndThePathToIt) {
  const UID uid(db, &selfPath, &refPath, target, nullptr);
  EXPECT_TRUE(uid.IsValid());
  self->SetObjectValid(false);
  EXPECT_TRUE(uid.IsValid()) << "its own path does not count";
  through->SetObjectValid(false);
  EXPECT_FALSE(uid.IsValid());
  through->SetObjectValid(true);
  target->SetObjectValid(false);
  EXPECT_FALSE(uid.IsValid());
  EXPECT_FALSE(UID().IsValid());
}

TEST_F(Reference, AnswersAnInvalidTargetOnlyIfItIsAffectedAndAskedFor) {
  UID uid(db, nullptr, nullptr, target, nullptr);
  EXPECT_EQ(uid.GetValidObject(false), target.Get());
  uid.SetValidObjStatus(40);
  EXPECT_TRUE(target->JudgeStatus(40));
  target->SetObjectValid(false);
  uid.SetValidObjStatus(41);
  EXPECT_FALSE(target->JudgeStatus(41));
  EXPECT_EQ(uid.GetValidObject(true), nullptr);
  target->SetStatus(ZOS_AFFECTED);
  EXPECT_EQ(uid.GetValidObject(true), target.Get());
  EXPECT_EQ(uid.GetValidObject(false), nullptr);
}

TEST_F(Reference, ComparesThePathToItsTargetWithRecords) {
  const UID uid(db, nullptr, &refPath, target, nullptr);
  const UID top(db, nullptr, nullptr, target, nullptr);
  KID* same[] = {through->GetOID(), through->GetOID()};
  KID* other[] = {through->GetOID(), self->GetOID()};
  EXPECT_TRUE(uid.IsSameRootToRefPID(2, same));
  EXPECT_FALSE(uid.IsSameRootToRefPID(2, other));
  EXPECT_FALSE(uid.IsSameRootToRefPID(1, same));
  EXPECT_FALSE(uid.IsSameRootToRefPID(0, nullptr));
  EXPECT_TRUE(top.IsSameRootToRefPID(0, nullptr));
  EXPECT_FALSE(top.IsSameRootToRefPID(1, same));
}

TEST_F(Reference, OrdersByItsCIDAndNullFirst) {
  const UID low(db, nullptr, nullptr, self, nullptr);
  const UID high(db, nullptr, nullptr, target, nullptr);
  const UID::lessCID less;
  EXPECT_TRUE(less(&low, &high));
  EXPECT_FALSE(less(&high, &low));
  EXPECT_FALSE(less(&low, nullptr));
  EXPECT_TRUE(less(nullptr, &low));
  EXPECT_FALSE(less(nullptr, nullptr));
}

class ReferenceStream : public Reference {
 protected:
  UID uid{db, &selfPath, &refPath, target, &kEdge};
  // form, one index, kind; then the index
  Bytes edge = {1, 1, 2, 0, 4, 0, 0, 0};
};

TEST_F(ReferenceStream, WritesAByteTheCIDAndThePart) {
  const auto bytes = Written([&](IZStream* stream) { uid.Save(stream, db, true); });
  EXPECT_EQ(bytes, Bytes{1} + Words({2, 1, 3}) + edge);
  ByteStream stream(bytes);
  UID loaded(db, nullptr, nullptr, self, &kFace);
  loaded.Load(&stream, db, false);
  EXPECT_TRUE(loaded.IsSame(&uid)) << "what was there before is replaced";
}

TEST_F(ReferenceStream, LeavesTheCIDOutWhenToldAndTakesOnlyTheByte1ForOne) {
  EXPECT_EQ(Written([&](IZStream* stream) { uid.Save(stream, db, false); }), Bytes{0} + edge);
  for (const BYTE form : {BYTE{0}, BYTE{2}}) {
    ByteStream stream(Bytes{form} + edge);
    UID loaded;
    loaded.Load(&stream, db, true);
    EXPECT_EQ(loaded.CID, nullptr);
    EXPECT_TRUE(kEdge.IsSame(loaded.SubID));
    EXPECT_EQ(stream.GetBytesLeft(), 0U);
  }
}

TEST_F(ReferenceStream, WritesAFlagInFrontOfANullableOne) {
  EXPECT_EQ(Written([&](IZStream* stream) { UID::SaveUID(nullptr, stream, db); }), Bytes{0});
  const auto bytes = Written([&](IZStream* stream) { UID::SaveUID(&uid, stream, db); });
  EXPECT_EQ(bytes, (Bytes{1, 1} + Words({2, 1, 3}) + edge));
  ByteStream stream(bytes);
  const std::unique_ptr<UID> loaded(UID::LoadUID(&stream, db));
  EXPECT_TRUE(uid.IsSame(loaded.get()));
  ByteStream none({0});
  EXPECT_EQ(UID::LoadUID(&none, db), nullptr);
}

TEST_F(ReferenceStream, ThrowsAndStaysWhenTheStreamIsDamaged) {
  const UID before(uid);
  const auto bytes = Written([&](IZStream* stream) { UID::SaveUID(&uid, stream, db); });
  ExpectShortStreamsThrow(bytes, [&](IZStream* stream) {
    const std::unique_ptr<UID> loaded(UID::LoadUID(stream, db));
  });
  ExpectShortStreamsThrow({bytes.begin() + 1, bytes.end()},
                          [&](IZStream* stream) { uid.Load(stream, db, true); });
  EXPECT_TRUE(uid.IsSame(&before));
}

class ReferenceArray : public ReferenceStream {
 protected:
  ~ReferenceArray() override {
    for (const UID* loaded : uids) delete loaded;
  }
  std::vector<UID*> uids;
};

TEST_F(ReferenceArray, WritesACountAndAppendsWhatItReads) {
  UID whole(db, nullptr, nullptr, self, nullptr);
  const auto bytes = Written([&](IZStream* stream) {
    UID::Save({&uid, &whole}, stream, db, true);
  });
  EXPECT_EQ(bytes, Words({2}) + Bytes{1} + Words({2, 1, 3}) + edge + Bytes{1} + Words({0, 0, 1}) +
                       Bytes{0});
  uids.push_back(new UID);
  ByteStream stream(bytes);
  UID::Load(uids, &stream, db, true);
  ASSERT_EQ(uids.size(), 3U);
  EXPECT_TRUE(uids[1]->IsSame(&uid));
  EXPECT_TRUE(uids[2]->IsSame(&whole));
}

TEST_F(ReferenceArray, KeepsWhatWasReadBeforeDamageAndRefusesACountThatCannotBe) {
  for (const LONG count : {3, 0x7FFFFFFF}) {
    ByteStream stream(Words({count}) + Bytes{0, 0, 0, 9, 9, 9});
    EXPECT_THROW(UID::Load(uids, &stream, db, true), CAtlException);
    EXPECT_EQ(uids.size(), 1U) << count;
  }
  ByteStream negative(Words({-1}));
  UID::Load(uids, &negative, db, true);
  EXPECT_EQ(uids.size(), 1U);
}

}  // namespace
