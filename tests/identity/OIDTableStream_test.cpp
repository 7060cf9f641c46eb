// What the ID table writes, and what it makes of sound and damaged bytes.
#include "tests/identity/Document.h"
#include "tests/identity/Records.h"

namespace {

using namespace zdm::test;

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
    ByteStream stream(First(bytes, size));
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

TEST(OIDTableStream, TakesIDsInAnyOrder) {
  COIDManager table;
  ByteStream stream(Words({4, 0, 0, 9, 0, 0, -1, 0, 0, 9, 0, 0, -4}));
  EXPECT_TRUE(table.Load(&stream));
  table.ReSort();
  EXPECT_EQ(IDsOf(table.GetOIDs()), (std::vector<LONG>{-4, -1, 9, 9}));
  EXPECT_EQ(table.GetOIDByID(-1), nullptr) << "a stored -1 is not the root";
  EXPECT_NE(table.GetOIDByID(9), nullptr);
  EXPECT_EQ(table.QueryHardID(), -5);
}

}  // namespace
