// Damaged records: what survives comes back right, what does not is named, and no object comes
// under another's manager.
#include "document/Salvage.h"

#include "tests/document/SalvageSupport.h"

#include <random>

using namespace zdm::test;
using zdm::ObjectFate;
using zdm::RangeKind;
using zdm::SalvageStage;

namespace {

TEST_F(SalvageTest, OfASoundFileOpensIt) {
  const auto opened = zdm::Salvage(SoundFile());
  EXPECT_EQ(opened.ledger.stage, SalvageStage::kSound);
  EXPECT_EQ(ContentsOf(*opened.document), contents);
  EXPECT_FALSE(opened.document->IsModified());
  EXPECT_EQ(opened.ledger.Count(ObjectFate::kLost), 0u);
  EXPECT_EQ(opened.ledger.CountOwnerless(), 0u);
  for (const auto& range : opened.ledger.ranges) {
    EXPECT_NE(range.kind, RangeKind::kUnknown) << range.begin;
    EXPECT_NE(range.kind, RangeKind::kDamaged) << range.begin;
  }
  // Read as a damaged one it is the same document, order in managers included.
  EXPECT_EQ(Try(sound), contents.size());
  salvaged.document->SaveAs(TempFile("again.zdm"));
  EXPECT_EQ(FileBytes(salvaged.document->GetPath()), sound);
}

TEST_F(SalvageTest, LosesFewObjectsToFlippedBits) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    Bytes damaged = sound;
    for (int i = 0; i < 6; ++i) {
      damaged[random() % damaged.size()] ^= static_cast<BYTE>(1 << random() % 8);
    }
    EXPECT_GE(Try(damaged) + 6, contents.size());
  }
}

TEST_F(SalvageTest, MendsABitAndTrustsTheRecordAgain) {
  Bytes damaged = sound;
  damaged[RecordOf(30).place + offsetof(zdm::ObjectHeader, ownerId)] ^= 3 ^ 1;
  EXPECT_EQ(Try(damaged), contents.size());
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kStreams);
  EXPECT_TRUE(Account(30).isMended);
  EXPECT_EQ(ContentsOf(*salvaged.document), contents);
}

TEST_F(SalvageTest, NeverBelievesTheOwnerOfADoubtfulRecord) {
  Bytes damaged = sound;
  BYTE* record = &damaged[RecordOf(30).place];
  record[offsetof(zdm::ObjectHeader, ownerId)] ^= 3;
  record[offsetof(zdm::ObjectHeader, auxWord1)] ^= 1;
  EXPECT_EQ(Try(damaged), contents.size() - 1);
  EXPECT_EQ(Account(30).fate, ObjectFate::kDoubtful);
  EXPECT_TRUE(Account(30).isOwnerless);
  EXPECT_EQ(ContentsOf(*salvaged.document).at(30).owner, kGathered);
  EXPECT_EQ(salvaged.document->GetCount(), 5)
      << "materials, categories, walls, doors and Recovered";
}

TEST_F(SalvageTest, GathersTheObjectsOfALostManager) {
  Try(WithoutRecord(1));
  EXPECT_EQ(Account(1).fate, ObjectFate::kLost);
  EXPECT_EQ(salvaged.ledger.CountOwnerless(), 32u) << "30 walls, the foreign object, the proxy";
  const auto range =
      std::ranges::find(salvaged.ledger.ranges, RangeKind::kDamaged, &zdm::FileRange::kind);
  ASSERT_NE(range, salvaged.ledger.ranges.end());
  EXPECT_EQ(range->begin, RecordOf(1).place);
}

TEST_F(SalvageTest, KeepsTheIDsOfLostTargetsAndAccountsForThemInJson) {
  Try(WithoutRecord(4));
  EXPECT_EQ(Account(4).fate, ObjectFate::kLost);
  ASSERT_EQ(Account(4).ownerId, 0);
  const std::string json = salvaged.ledger.ToJson();
  for (const char* part : {R"({"stage":"streams","container":"sound","size":)",
                           R"("absent-class":1,"doubtful":0,"lost":1)", R"({"id":4,"fate":"lost"})",
                           R"("owner":1,"class":"{BAC66A06-E7EB-42B1-8755-E0E8AC0AC5A1}","at":)",
                           R"("kind":"damaged"})", R"({"name":"Index","state":"sound"})"}) {
    EXPECT_NE(json.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(std::ranges::count(json, '{'), std::ranges::count(json, '}'));
  salvaged.document->SaveAs(TempFile("lost.zdm"));
  const auto reopened = ContentsOf(*CZDocument::Open(salvaged.document->GetPath()));
  EXPECT_EQ(reopened.at(3), contents.at(3)) << "refers to object 4";
  EXPECT_EQ(reopened.size(), contents.size() - 1);
}

}  // namespace
