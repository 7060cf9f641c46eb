// Objects read back from a bare stream: where they go, and what damage costs.
#include "tests/identity/RecoverySupport.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Variable.h"
#include "zdm/host/IZPersistStrategy.h"

#include <gtest/gtest.h>

ZDM_OBJECT_BODY(zdm::test::Fragile)

namespace {

using namespace zdm::test;
using IDs = std::vector<LONG>;

constexpr LONG kOwner = Target::kManager;
constexpr GUID kUnknownClass = {0xDEADBEEF, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};

Bytes WithClass(Bytes record, const GUID& classId) {
  std::memcpy(record.data(), &classId, sizeof(classId));
  return record;
}

Bytes Failing(BYTE outcome, LONG id, LONG ownerId = kOwner) {
  Fragile* object = new Fragile(outcome);
  const auto held = zdm::Attached<IZDMObject>(object);
  return RecordOf(*held, id, ownerId);
}

TEST(ReadStream, AttachesObjectsInTheOrderOfTheStream) {
  Target target;
  Bytes second = Plain(10, kOwner, OLESTR("second"));
  second[33] = 0x55;  // option mask
  EXPECT_EQ(target.Read(Plain(12, kOwner) + second), 1);
  EXPECT_EQ(target.Attached(), (IDs{12, 10}));
  EXPECT_EQ(target.Unresolved(), "");
  OID* record = target.database->oids.GetOIDByID(10);
  ASSERT_NE(record->Object, nullptr);
  zdm::Bstr name;
  record->Object->GetName(name.Out());
  EXPECT_EQ(name, zdm::Bstr(OLESTR("second")));
  EXPECT_EQ(record->OptionAllowed & 0xFF, 0x55);
  EXPECT_TRUE(record->JudgeStatus(ZOS_ATTACHED));
  EXPECT_TRUE(record->JudgeStatus(ZOS_VALID));
  EXPECT_EQ(record->Object->GetOwner(), static_cast<IZDMObject*>(target.manager));
  EXPECT_EQ(record->Object->GetReferenceCount(), 1u);
  EXPECT_EQ(target.database->oids.GetOIDByID(11)->Object, nullptr);
}

TEST(ReadStream, NestedManagersTakeTheirObjects) {
  Target target;
  const auto inner = NewManager();
  constexpr GUID kFormer = zdm::ParseGuid("48500453-9BE3-480D-B645-48CDE9751D3A");
  EXPECT_EQ(target.Read(WithClass(RecordOf(*inner, 11, kOwner), kFormer) + Plain(12, 11)), 1);
  EXPECT_EQ(target.Attached(), (IDs{11}));
  auto* read = zdm::ViewAs<IZDMObjMgr>(target.manager->GetHead());
  ASSERT_NE(read, nullptr) << "records of the former class are managers";
  EXPECT_EQ(read->GetZRID(), zdm::ClassRow<CZDMObjMgr>::kClassID);
  EXPECT_EQ(read->GetCount(), 1);
}

TEST(ReadStream, WhatBecomesOfEachRecord) {
  const Bytes good = Plain(12, kOwner);
  const GUID reltnClass = zdm::ClassRow<CZPlainSingleReltn>::kClassID;
  const struct {
    const char* name;
    Bytes bytes;  // a good record behind them is read too, unless they end the reading
    bool endsIt = false;
    const char* unresolved = "";
    IDs attached = {12};
  } cases[] = {
      {"nothing", {}},
      {"no ID", Plain(0, kOwner)},
      {"an ID that is not listed", Plain(99, kOwner)},
      {"the root's ID", Plain(-1, kOwner)},
      {"the same ID twice", Plain(10, kOwner) + Plain(10, kOwner), false, "", {10, 12}},
      {"no owner", Plain(10, 0), false, "10<0 "},
      {"an owner that is not listed", Plain(10, 99), false, "10<99 "},
      {"an owner that is not read yet", Plain(10, 11), false, "10<11 "},
      {"no manager for owner", Plain(10, kOwner) + Plain(11, 10), false, "11<10 ", {10, 12}},
      {"its own owner", RecordOf(*NewManager(), 10, 10), false, "10<10 "},
      {"an unknown class", WithClass(Plain(10, kOwner), kUnknownClass), true},
      {"a class of relations", WithClass(Plain(10, kOwner), reltnClass), true},
      {"a class identifier cut off", Bytes(15, 1), true},
      {"a header cut off", Cut(good, 40), true},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const zdm::CapturedOutput output;
    Target target;
    const bool isShort = row.bytes.size() < 41;  // what stands alone at the end is no record
    EXPECT_EQ(target.Read(row.endsIt ? good + row.bytes : row.bytes + good),
              row.endsIt && !isShort ? 0 : 1);
    EXPECT_EQ(target.Attached(), row.attached);
    EXPECT_EQ(target.Unresolved(), row.unresolved);
    EXPECT_EQ(output.DebugText(), "");
  }
  EXPECT_EQ(Target().Read({}), 1);
}

TEST(ReadStream, UnresolvedObjectsCanBeSetUpAfterwards) {
  Target target;
  target.Read(RecordOf(*NewManager(), 11, 12) + RecordOf(*NewManager(), 12, kOwner));
  EXPECT_EQ(target.Unresolved(), "11<12 ");
  target.database->oids.SetupOwner();
  IZDMObject* object = target.database->oids.GetOIDByID(11)->Object;
  ASSERT_NE(object, nullptr);
  EXPECT_TRUE(object->IsObjectAttached());
  EXPECT_EQ(object->GetReferenceCount(), 2u) << "the manager's and that of the unresolved";
}

// Zeros between records.

TEST(ReadStream, PassesOverZerosAndOneByteMore) {
  const Bytes first = Plain(10, kOwner);
  const Bytes last = Plain(12, kOwner);
  // Sixteen zeros are a class identifier of zeros, and the byte behind them is passed over.
  for (const std::size_t zeros : {16u, 17u, 31u, 32u, 33u, 255u, 256u, 272u, 273u, 274u, 528u,
                                  65536u, 65552u, 65553u, 70000u, 200000u}) {
    SCOPED_TRACE(zeros);
    Target target;
    const bool loses = zeros == 16;  // the byte passed over is the record's first
    EXPECT_EQ(target.Read(first + Bytes(zeros) + last), loses ? 0 : 1);
    EXPECT_EQ(target.Attached(), loses ? IDs{10} : (IDs{10, 12}));
    Target padded;
    EXPECT_EQ(padded.Read(first + Bytes(zeros)), 0) << "up to the end";
    EXPECT_EQ(padded.Attached(), (IDs{10}));
  }
  EXPECT_EQ(Target().Read(first + Bytes(15)), 1) << "too short for an identifier";
}

TEST(ReadStream, ScanFindsWhatTheStepwiseScanFinds) {
  // Zeros, then bytes of all kinds, then a record, at many offsets against the window.
  const Bytes record = Plain(12, kOwner);
  for (std::size_t noise = 0; noise < 600; noise += 7) {
    Bytes stream(17);
    for (std::size_t i = 0; i < noise; ++i) stream.push_back(static_cast<BYTE>(i * 37 + 1));
    Target target;
    EXPECT_EQ(target.Read(stream + record), 1) << noise;
    EXPECT_EQ(target.Attached(), (IDs{12})) << noise;
  }
}

// Records that cannot be loaded.

struct ReadErrors : testing::Test {
  zdm::CapturedOutput output;
  Target target;
};

TEST_F(ReadErrors, AreReportedAndTheObjectIsKept) {
  const Bytes stream = Plain(10, kOwner) + Failing(1, 11) + Plain(12, kOwner);
  EXPECT_EQ(target.Read(stream), 1);
  EXPECT_EQ(output.DebugText(), "\n出错对象: SelfPID(11), OwnerPID(5)\n");
  EXPECT_TRUE(output.Messages().empty());
  EXPECT_EQ(target.Attached(), (IDs{10, 12})) << "body and tail are skipped";
  ASSERT_EQ(target.Unresolved(), "11<5 ");
  EXPECT_TRUE(Fragile::sawLoading);
  const auto& record = target.database->oids.GetUnresolved().front();
  EXPECT_EQ(record.ClassID, zdm::ClassRow<Fragile>::kClassID);
  EXPECT_EQ(record.Object->GetReferenceCount(), 1u);
  EXPECT_EQ(record.Object->GetOID(), target.database->oids.GetOIDByID(11));
  EXPECT_FALSE(record.Object->JudgeStatus(ZOS_LOADING));
  EXPECT_FALSE(record.Object->IsObjectValid());
}

TEST_F(ReadErrors, AreShownWhenUnlocked) {
  const Variable unlock("qv_unlock");
  for (const OLECHAR* value : {static_cast<const OLECHAR*>(nullptr), OLESTR(""), OLESTR("0")}) {
    unlock.Set(value);
    const zdm::CapturedOutput shown;
    target.Read(Failing(1, 0, -7));
    EXPECT_EQ(shown.DebugText(), "\n出错对象: SelfPID(0), OwnerPID(-7)\n");
    ASSERT_EQ(shown.Messages().size(), value != nullptr && *value != 0 ? 1u : 0u);
    for (const auto& message : shown.Messages()) {
      EXPECT_EQ(message.text, shown.DebugText());
      EXPECT_EQ(message.caption, "Read Error");
      EXPECT_EQ(message.flags, UINT{MB_OK | MB_ICONINFORMATION});
    }
  }
}

TEST_F(ReadErrors, OfEveryKindLeaveTheStreamInStep) {
  for (const BYTE outcome : {BYTE{1}, BYTE{2}, BYTE{3}}) {
    SCOPED_TRACE(int{outcome});
    Target fresh;
    EXPECT_EQ(fresh.Read(Failing(outcome, 11) + Plain(12, kOwner)), 1);
    EXPECT_EQ(fresh.Attached(), (IDs{12}));
    EXPECT_EQ(fresh.Unresolved(), "11<5 ");
  }
  // A tail that cannot be read has no length: the record behind it is out of step.
  Target fresh;
  EXPECT_EQ(fresh.Read(Failing(4, 11) + Plain(12, kOwner)), 0);
  EXPECT_EQ(fresh.Unresolved(), "11<5 ");
}

TEST_F(ReadErrors, HostileLengthsGoForwardOnly) {
  for (const ULONG length : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFD3u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    Bytes record = Failing(1, 11);
    std::memcpy(&record[41], &length, sizeof(length));
    Target fresh;
    EXPECT_EQ(fresh.Read(Plain(10, kOwner) + record + Plain(12, kOwner)), 1);
    EXPECT_EQ(fresh.Attached(), (IDs{10}));
    EXPECT_EQ(fresh.Unresolved(), "11<5 ");
  }
}

TEST_F(ReadErrors, CutsKeepWhatPrecedesThem) {
  const Bytes first = Plain(10, kOwner);
  const Bytes all = first + Plain(11, kOwner) + Bytes(20) + Plain(12, kOwner);
  for (std::size_t size = 0; size < all.size(); ++size) {
    Target fresh;
    fresh.Read(Cut(all, size));
    IDs expected;
    if (size >= first.size()) expected.push_back(10);
    if (size >= 2 * first.size()) expected.push_back(11);
    EXPECT_EQ(fresh.Attached(), expected) << size;
  }
}

TEST_F(ReadErrors, FailingStreamsEndTheReading) {
  const Bytes stream = Plain(10, kOwner) + Plain(11, kOwner);
  for (int calls = 0; calls < 2; ++calls) {
    Target fresh;
    ByteStream source(stream);
    source.below.failAfter = calls;
    EXPECT_EQ(fresh.database->oids.ReadStream(&source), 1);
    EXPECT_EQ(fresh.Attached().size(), calls == 0 ? 0u : 2u);
  }
}

// The host's part.

/// Puts objects at the head and drops the one of ID 11. The document lets go of it at its first
/// use.
struct AddLast : IZObjectImpl<IZPersistStrategy> {
  void Add(IZDMObjMgr* manager, IZDMObject* object) override {
    if (holder != nullptr) holder->Reset();
    if (object->GetID() != 11) manager->AttachHead(object->GetIZObject());
  }

  ZRefPtr<IZPersistStrategy>* holder = nullptr;
};

TEST(ReadByHost, StrategyPutsObjectsWhereItWants) {
  Target target;
  TestDatabase& db = *target.database;
  AddLast* strategy = new AddLast;
  db.strategy = zdm::Attached<IZPersistStrategy>(strategy);
  strategy->holder = &db.strategy;
  EXPECT_EQ(target.Read(Plain(10, kOwner) + Plain(11, kOwner) + Plain(12, kOwner)), 1);
  EXPECT_EQ(target.Attached(), (IDs{12, 10}));
  EXPECT_EQ(db.oids.GetOIDByID(11)->Object, nullptr) << "dropped by the strategy";
  EXPECT_FALSE(db.oids.GetOIDByID(11)->JudgeStatus(ZOS_VALID));
  EXPECT_EQ(db.timesAskedForStrategy, 1);
}

TEST(ReadByHost, TypeByteMakesObjectsOfUnknownClassesAndEveryRecordIsAStep) {
  Target target;
  auto meter = zdm::Attached(new Meter);
  target.database->oids.SetProgressMeter(meter);
  Bytes record = WithClass(Plain(10, kOwner), kUnknownClass);
  record[32] = 7;
  EXPECT_EQ(target.Read(record + Plain(0, 0) + Bytes(17) + Plain(12, kOwner)), 1);
  EXPECT_EQ(target.Attached(), (IDs{10, 12}));
  EXPECT_EQ(meter->steps, 3);
}

TEST(ReadStream, WorksWithoutDocument) {
  COIDManager table;
  ListRecord(table, 10);
  ByteStream stream(Plain(10, kOwner) + WithClass(Plain(10, kOwner), kUnknownClass));
  EXPECT_EQ(table.ReadStream(&stream), 0);
  EXPECT_EQ(table.GetUnresolved().size(), 1u);
}

TEST(ReadStream, ChainsOfManagersOfAnyLengthEnd) {
  constexpr LONG kLength = 100000;
  Target target({});
  ByteStream stream;
  const auto empty = NewManager();
  ASSERT_NE(empty, nullptr);
  const Bytes record = RecordOf(*empty, 0, 0);
  for (LONG id = 10; id < 10 + kLength; ++id) {
    ListRecord(target.database->oids, id);
    Bytes link = record;
    const LONG ids[] = {id, id == 10 ? kOwner : id - 1};
    std::memcpy(&link[24], ids, sizeof(ids));
    stream.Write(link.data(), static_cast<ULONG>(link.size()));
  }
  stream.Seek(0, STREAM_SEEK_SET);
  EXPECT_EQ(target.database->oids.ReadStream(&stream), 1);
  EXPECT_EQ(target.database->oids.GetValidOIDCount(), kLength + 1);
}

}  // namespace
