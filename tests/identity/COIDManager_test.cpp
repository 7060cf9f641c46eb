// IDs, the list and look-up of the ID table, and what it makes of sound and damaged bytes.
#include "zdm/identity/COIDManager.h"

#include "tests/identity/Records.h"
#include "tests/support/Variable.h"
#include "zdm/identity/COuterPIDManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace zdm::test;

constexpr LONG kMaxID = 0x7FFFFFFF;

TEST(IDs, GoOnAfterTheListedOnes) {
  const struct {
    const char* what;
    std::vector<LONG> listed;
    LONG hard, soft;
  } rows[] = {
      {"both kinds", {-7, -2, 3, 9}, -8, 10},
      {"no hard ID", {3, 9}, -2, 10},
      {"no soft ID", {-7, -2}, -8, 1},
      {"only a stored root", {-1}, -2, 1},
      {"an ID of 0", {0}, -2, 1},
      {"nothing", {}, -2, 1},
  };
  for (const auto& row : rows) {
    COIDManager table;
    table.Init();
    for (const LONG id : row.listed) ListRecord(table, id);
    table.SetIDRange();
    EXPECT_EQ(table.QueryHardID(), row.hard) << row.what;
    EXPECT_EQ(table.QuerySoftID(), row.soft) << row.what;
  }
}

TEST(IDs, EndInsteadOfWrapping) {
  for (const LONG lowest : {-kMaxID - 1, -kMaxID}) {
    COIDManager table;
    ListRecord(table, lowest);
    ListRecord(table, kMaxID);
    table.SetIDRange();
    const Document db;
    const auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    EXPECT_THROW(table.QueryHardID(), CAtlException);
    EXPECT_THROW(table.AssignItemID(object, false, false), CAtlException);
    EXPECT_FALSE(object->IsObjectAttached());
    EXPECT_EQ(table.GetOIDs().size(), 2U);
  }
}

class AssignedIDs : public testing::Test {
 protected:
  ZRefPtr<IZDMObject> Assign(bool hard) {
    objects.push_back(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
    db->oids.AssignItemID(objects.back(), hard, true);
    return objects.back();
  }

  Document db;
  std::vector<ZRefPtr<IZDMObject>> objects;
};

TEST_F(AssignedIDs, KeepTheListInOrder) {
  for (const bool hard : {false, true, true, false, true}) Assign(hard);
  EXPECT_EQ(db->GetOIDByID(-3), objects[2]->GetOID()) << "found before the list is walked";
  EXPECT_EQ(db->GetOIDByID(-5), nullptr);
  EXPECT_EQ(IDsOf(db->oids.GetOIDs()), (std::vector<LONG>{-4, -3, -2, 1, 2}));
  Assign(true);
  Assign(false);
  for (const auto& object : objects) {
    EXPECT_EQ(db->GetOIDByID(static_cast<LONG>(object->GetID())), object->GetOID());
    EXPECT_TRUE(object->IsObjectAttached() && object->IsObjectValid());
  }
}

TEST_F(AssignedIDs, ReplaceAnIDThatIsStillListed) {
  const auto object = Assign(false);
  object->ClearStatus(ZOS_ATTACHED);
  db->oids.AssignItemID(object, false, false);
  EXPECT_EQ(IDsOf(db->oids.GetOIDs()), std::vector<LONG>{2});
}

TEST(Table, FindsEveryListedIDAndNoOther) {
  std::mt19937 random(1);
  for (const int gap : {1, 2, 50}) {
    COIDManager table;
    std::vector<LONG> ids;
    for (LONG id = -400; id < 400; id += 1 + static_cast<LONG>(random() % gap)) {
      if (id != 0 && id != -1) ids.push_back(id);
    }
    for (const LONG id : ids) ListRecord(table, id);
    table.SetIDRange();
    for (LONG id = -410; id < 410; ++id) {
      const OID* found = table.GetOIDByID(id);
      const bool isListed = std::ranges::binary_search(ids, id);
      ASSERT_EQ(found != nullptr, isListed) << id << " of IDs up to " << gap << " apart";
      ASSERT_TRUE(found == nullptr || found->ID == id);
    }
    EXPECT_EQ(table.GetOIDByID(kMaxID), nullptr);
    EXPECT_EQ(table.GetOIDByID(-kMaxID - 1), nullptr);
  }
}

TEST(Table, FindsAnIDThatWasChangedInTheRecord) {
  COIDManager table;
  table.Init();
  for (const LONG id : {1, 2, 3}) ListRecord(table, id);
  OID* last = table.GetOIDByID(3);
  last->ID = 100;
  EXPECT_EQ(table.GetOIDByID(100), last);
  EXPECT_EQ(table.GetOIDByID(3), nullptr);
}

TEST(Table, AnswersItsRootForMinus1) {
  COIDManager table;
  EXPECT_EQ(table.GetOIDByID(-1), nullptr);
  table.SetRootOID(new OID(0, 0, -1, nullptr));
  EXPECT_EQ(table.GetOIDByID(-1), table.GetRootOID());
  EXPECT_EQ(table.GetOwnerPIDByID(-1), table.GetRootOID());
  EXPECT_EQ(table.GetOwnerPIDByID(0), nullptr);
  EXPECT_TRUE(table.GetOIDs().empty());
}

TEST(Table, ForgetsARememberedOwnerThatLeavesTheList) {
  COIDManager table;
  table.Init();
  OID* owner = ListRecord(table, 5);
  EXPECT_EQ(table.GetOwnerPIDByID(5), owner);
  table.Remove(owner);
  EXPECT_EQ(table.GetOwnerPIDByID(5), nullptr);
  OID* later = ListRecord(table, 5);
  EXPECT_EQ(table.GetOwnerPIDByID(5), later) << "absence is not remembered";
  table.Init();
  EXPECT_EQ(table.GetOwnerPIDByID(5), nullptr);
}

TEST(Table, RemovesThatVeryRecord) {
  COIDManager table;
  for (const LONG id : {-3, 1, 2, 4}) ListRecord(table, id);
  OID stranger(0, 0, 2, nullptr);
  table.Remove(&stranger);
  EXPECT_EQ(table.GetOIDs().size(), 4U);
  OID* changed = table.GetOIDByID(1);
  changed->ID = 77;
  table.Remove(changed);
  table.Remove(changed);
  table.Remove(nullptr);
  EXPECT_EQ(IDsOf(table.GetOIDs()), (std::vector<LONG>{-3, 2, 4}));
  EXPECT_NE(table.GetOIDByID(4), nullptr);
}

TEST(Table, SetsAStatusOnAllButClearsItOnlyWhereThereIsAnObject) {
  const Document db;
  const auto bound = db->MakeObject();
  OID* unbound = ListRecord(db->oids, 7);
  db->oids.SetAllStatus(30);
  EXPECT_TRUE(bound->JudgeStatus(30) && unbound->JudgeStatus(30));
  db->oids.ClearAllStatus(30);
  EXPECT_FALSE(bound->JudgeStatus(30));
  EXPECT_TRUE(unbound->JudgeStatus(30));
  EXPECT_THROW(db->oids.SetAllStatus(64), std::out_of_range);
}

TEST(Table, BindsAnObjectToItsRecord) {
  const Document db;
  OID* record = ListRecord(db->oids, 7);
  const auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetStatus(20);
  EXPECT_EQ(db->oids.RegisterSelf(8, object), 0);
  EXPECT_EQ(db->oids.RegisterSelf(7, object), 1);
  EXPECT_EQ(object->GetOID(), record);
  EXPECT_EQ(record->Object, object.Get());
  EXPECT_TRUE(record->JudgeStatus(20)) << "the object's status goes along";
  EXPECT_EQ(db->oids.RegisterOwner(8, object), 0);
  EXPECT_EQ(db->oids.RegisterOwner(-1, object), 1);
  EXPECT_EQ(object->GetOwnerOID(), db->GetOID());
  EXPECT_EQ(COIDManager::GetObjOwnerID(object), -1);
  EXPECT_TRUE(COIDManager::GetObjType(object).IsEmpty()) << "no name is registered";
  COIDManager::SetOwnerOID({object}, nullptr);
  EXPECT_EQ(COIDManager::GetObjOwnerID(object), 0);
}

TEST(Table, FindsTheRecordOfTheSameObjectInAnotherDocument) {
  const Document db;
  const Document other;
  const auto here = db->MakeObject(nullptr, 4);
  const auto there = other->MakeObject(nullptr, 4);
  const auto stranger = other->MakeObject(nullptr, 5);
  EXPECT_EQ(db->oids.GetSameInitPID(there->GetOID()), here->GetOID());
  EXPECT_EQ(db->oids.GetSameInitPID(stranger->GetOID()), nullptr);
  OID unbound(0, 0, 4, nullptr);
  EXPECT_EQ(db->oids.GetSameInitPID(&unbound), nullptr);
}

TEST(Table, IsCopiedWithItsRecordsAndCounters) {
  COIDManager table;
  for (const LONG id : {-4, 6}) ListRecord(table, id);
  table.SetIDRange();
  COIDManager copy(table);
  EXPECT_EQ(copy.GetOIDs(), table.GetOIDs());
  EXPECT_EQ(copy.GetOIDByID(6), table.GetOIDByID(6));
  EXPECT_EQ(copy.QueryHardID(), -5);
  copy.Init();
  COIDManager& same = table;
  table = same;
  copy = table;
  EXPECT_EQ(copy.GetOIDs().size(), 2U);
}

TEST(Environment, IsComparedWithoutCase) {
  EXPECT_FALSE(COIDManager::HasSameSysVariantValue("zdm_variable", CStringW()));
  const Variable variable("zdm_variable");
  variable.Set(OLESTR("Level 2"));
  CStringW value;
  ASSERT_TRUE(COIDManager::GetSysVariant("zdm_variable", value));
  EXPECT_EQ(value, OLESTR("Level 2"));
  EXPECT_TRUE(COIDManager::HasSameSysVariantValue("zdm_variable", CStringW(OLESTR("lEVEL 2"))));
  EXPECT_FALSE(COIDManager::HasSameSysVariantValue("zdm_variable", CStringW(OLESTR("level 20"))));
}

TEST(OIDTableStream, WritesTheValidRecordsThatHaveAnObject) {
  const Document db;
  const auto first = db->MakeObject(nullptr, -3);
  first->GetOID()->AuxWord1 = 8;
  first->GetOID()->AuxWord2 = 9;
  const auto invalid = db->MakeObject(nullptr, 4);
  invalid->SetObjectValid(false);
  const auto last = db->MakeObject(nullptr, 6);
  ListRecord(db->oids, 7)->SetStatus(ZOS_VALID, 0);
  EXPECT_EQ(Written([&](IZStream* stream) { db->oids.Save(stream); }),
            Words({2, 0, 9, -3, 0, 0, 6}));
}

TEST(OIDTableStream, ReadsAllThreeWordsAfterWhatIsListed) {
  COIDManager table;
  ListRecord(table, -9);
  const auto meter = zdm::Attached(new Meter);
  table.SetProgressMeter(meter);
  ByteStream stream(Words({2, 11, 12, 3, 21, 22, 5}));
  EXPECT_TRUE(table.Load(&stream));
  ASSERT_EQ(IDsOf(table.GetOIDs()), (std::vector<LONG>{-9, 3, 5}));
  const OID* record = table.GetOIDByID(3);
  EXPECT_EQ(record->AuxWord1, 11);
  EXPECT_EQ(record->AuxWord2, 12);
  EXPECT_EQ(record->Object, nullptr);
  EXPECT_TRUE(record->Status.none());
  EXPECT_EQ(meter->range, 3);
  EXPECT_EQ(table.QueryHardID(), -10);
  EXPECT_EQ(table.QuerySoftID(), 6);
}

TEST(OIDTableStream, KeepsTheCompleteRecordsOfAStreamThatEndsEarly) {
  const auto bytes = Words({2, 0, 0, -7, 0, 0, 9});
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    COIDManager table;
    table.Init();
    ByteStream stream(Cut(bytes, size));
    EXPECT_FALSE(table.Load(&stream)) << size;
    const bool hasFirst = size >= 16;
    EXPECT_EQ(table.GetOIDs().size(), hasFirst ? 1U : 0U) << size;
    EXPECT_EQ(table.QueryHardID(), hasFirst ? -8 : -2) << "the ranges follow, " << size;
  }
}

TEST(OIDTableStream, TakesNoMemoryForAHostileCount) {
  COIDManager table;
  for (const LONG count : {0x7FFFFFFF, -5}) {
    ByteStream hostile(Words({count, 0, 0, 5}));
    EXPECT_FALSE(table.Load(&hostile));
    EXPECT_EQ(table.GetOIDs().size(), 1U);
  }
  const auto meter = zdm::Attached(new Meter);
  COIDManager empty;
  empty.SetProgressMeter(meter);
  ByteStream none(Words({0}));
  EXPECT_TRUE(empty.Load(&none));
  EXPECT_EQ(meter->range, -1) << "an empty table tells no range";
}

TEST(OIDTableStream, TakesIDsInAnyOrderAndSortsThemEqualOnesAsTheyCame) {
  COIDManager table;
  ByteStream stream(Words({4, 0, 0, 9, 0, 0, -1, 0, 0, 9, 0, 0, -4}));
  EXPECT_TRUE(table.Load(&stream));
  const OID* first = table.GetOIDs()[0];
  table.ReSort();
  EXPECT_EQ(IDsOf(table.GetOIDs()), (std::vector<LONG>{-4, -1, 9, 9}));
  EXPECT_EQ(table.GetOIDs()[2], first);
  EXPECT_EQ(table.GetOIDByID(-1), nullptr) << "a stored -1 is not the root";
  EXPECT_NE(table.GetOIDByID(9), nullptr);
  EXPECT_EQ(table.QueryHardID(), -5);
  EXPECT_EQ(table.QuerySoftID(), 10);
}

}  // namespace
