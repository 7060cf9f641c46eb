// Embedded objects: what they leave to their extension, and what they store beside it.
#include "platform/ole/CAtlException.h"
#include "tests/model/EmbedSupport.h"
#include "tests/model/ModelSupport.h"
#include "tests/support/SlotOf.h"
#include "tests/support/Thrown.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/relations/CZReltnColl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

ZDM_OBJECT_BODY(zdm::test::Extension)

namespace {

using namespace zdm::test;

constexpr std::size_t kCount = 16;             // offsets in an embedded record
constexpr std::size_t kFirstClass = 20;        //
constexpr std::size_t kOneRelation = 16 + 16;  // class identifier and plain single relation

class Embed : public testing::Test {
 protected:
  Embed() {
    Extension::zInit();
    embed = Make(ext);
    db.Add(embed.Get(), 0x01020304);
  }

  static ZRefPtr<CZDMObjEmbed> Make(const ZRefPtr<Extension>& ext) {
    auto object = zdm::Attached(new CZDMObjEmbed);
    object->SetExt(ext.Get());
    return object;
  }

  std::vector<BYTE> SavedRecord() {
    ByteStream stream;
    embed->SaveEmbedded(&stream, &db);
    return stream.GetBytes();
  }

  TestDatabase db;
  ZRefPtr<IZDMObject> target = db.MakeObject(nullptr, 0x77);
  ZRefPtr<Extension> ext = zdm::Attached(new Extension);
  ZRefPtr<CZDMObjEmbed> embed;
};

TEST_F(Embed, OperationsFollowThoseOfTheObjectTemplate) {
  using Impl = IZDMObjEmbedImpl<IZDMObject>;
  ZDM_EXPECT_SLOTS(SlotOf(&IZDMObjectImpl<IZDMObject>::ReservedQuery16) + 1, Impl, SaveEmbedded,
                   LoadEmbedded, SaveModuleGuid, LoadModuleGuid, SaveRelations, LoadRelations,
                   SetExt, GetExt, WriteHeaderTo, SetMask, GetMask);
  ZDM_EXPECT_SLOTS(SlotOf(&CZDMObjEmbed::GetLPVOID) + 1, CZDMObjEmbed, getVersion, IsDumpRef,
                   GetExtClassID);
}

TEST_F(Embed, HeaderIs33BytesInFiveWrites) {
  embed->SetMask(0xF000000000000001);
  TestStream stream;
  stream.failAfter = 5;  // and so counts
  embed->WriteHeaderTo(&stream);
  const std::vector<BYTE> expected = {
      0xDA, 0x4A, 0xEB, 0xF9, 0x2B, 0x05, 0x5A, 0x40, 0xB3, 0x97, 0xA3, 0x73, 0x0C, 0x9A, 0x5A,
      0xD9,                                             // class identifier
      0x04, 0x03, 0x02, 0x01, 0xFF, 0xFF, 0xFF, 0xFF,   // ID, owner's ID
      0x02,                                             // format
      0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0};  // mask
  EXPECT_EQ(stream.bytes, expected);
  EXPECT_EQ(stream.calls, 5);

  // Back: format and mask, and nothing else.
  stream.bytes[24] = 7;
  ByteStream source(stream.bytes);
  auto loaded = Make(nullptr);
  loaded->ReadHeader(&source);
  EXPECT_EQ(source.GetPosition(), 33u);
  EXPECT_EQ(loaded->GetMask(nullptr), 0xF000000000000001u);
  EXPECT_EQ(loaded->GetID(), 0u);
  TestStream again;
  loaded->WriteHeaderTo(&again);
  EXPECT_EQ(again.bytes[24], 7);
}

TEST_F(Embed, HeaderThatCannotBeWrittenThrows) {
  TestStream failing;
  failing.failAfter = 3;
  EXPECT_EQ(Thrown([&] { embed->WriteHeaderTo(&failing); }), E_ACCESSDENIED);
  TestStream full;
  full.room = 30;
  EXPECT_EQ(Thrown([&] { embed->WriteHeaderTo(&full); }), STG_E_MEDIUMFULL);
}

TEST_F(Embed, RecordHoldsTheReferencesOfTheMomentOfSaving) {
  ext->relation = RelationTo(target);
  const std::vector<BYTE> expected = {
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
      0x00,                    // module
      0x01, 0x00, 0x00, 0x00,  // one relation
      0x56, 0xE4, 0xF8, 0x69, 0xA8, 0x23, 0xF9, 0x4B, 0xA7, 0x65, 0x5C, 0xCF, 0x27, 0x95, 0x1F,
      0x72,                                             // its class identifier
      0x00, 0x00, 0x80, 0x00, 0xFF, 0xFF, 0xFF, 0xFF,   // status word, tag
      0x00, 0x00, 0x00, 0x00, 0x77, 0x00, 0x00, 0x00,   // spare word, target
      0x00, 0x00, 0x01,                                 // word, kind
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0};  // mask
  EXPECT_EQ(SavedRecord(), expected);
  ext->relation = nullptr;
  EXPECT_EQ(SavedRecord().size(), expected.size() - kOneRelation);
}

TEST_F(Embed, FormatOneStoresNothingAndReadsNothing) {
  TestStream header;
  embed->WriteHeaderTo(&header);
  header.bytes[24] = 1;
  ByteStream source(header.bytes);
  embed->ReadHeader(&source);
  EXPECT_TRUE(SavedRecord().empty());
  ByteStream full(std::vector<BYTE>(64, 0xFF));
  embed->LoadEmbedded(&full, &db);
  EXPECT_EQ(full.GetPosition(), 0u);
}

TEST_F(Embed, WholeRecordComesBack) {
  ext->number = 42;
  ext->relation = RelationTo(target);
  std::vector<BYTE> record = SavedRecord();
  record[0] = 0xAB;                   // module
  record[record.size() - 11] = 0x34;  // word
  record[record.size() - 9] = 9;      // kind
  record[record.size() - 1] = 0x80;   // mask
  ByteStream stream(record);
  stream.Seek(0, STREAM_SEEK_END);
  embed->SaveBody(&stream, &db);

  auto newExt = zdm::Attached(new Extension);
  auto loaded = Make(newExt);
  stream.Seek(0, STREAM_SEEK_SET);
  loaded->LoadEmbedded(&stream, &db);
  loaded->LoadBody(&stream, &db);
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
  EXPECT_EQ(newExt->number, 42);
  EXPECT_EQ(loaded->GetDMType(), 9);
  EXPECT_EQ(loaded->GetMask(nullptr), 0x8000000000000000u);

  // The record written again is the record read, as long as the extension offers the same.
  newExt->relation = ext->relation;
  EXPECT_TRUE(loaded->JudgeStoredRelations());
  ByteStream again;
  loaded->SaveEmbedded(&again, &db);
  EXPECT_EQ(again.GetBytes(), record);
}

TEST_F(Embed, StoredRelationsFollowTheReferences) {
  EXPECT_TRUE(embed->JudgeStoredRelations()) << "none stored";
  ext->relation = RelationTo(target);
  SavedRecord();
  EXPECT_TRUE(embed->JudgeStoredRelations());
  ext->relation = RelationTo(db.MakeObject());
  EXPECT_FALSE(embed->JudgeStoredRelations()) << "another target";
  embed->AssertValid(&db);
  EXPECT_TRUE(embed->JudgeStoredRelations());
  ext->relation = nullptr;
  EXPECT_FALSE(embed->JudgeStoredRelations()) << "another number";
}

TEST_F(Embed, ForwardsToItsExtension) {
  ext->relation = RelationTo(target);
  EXPECT_EQ(IDsOffered(*embed), "119 ");
  zdm::test::Canary visitor;
  visitor.stopAt = 0x77;
  EXPECT_FALSE(embed->VisitReferences(nullptr, &visitor)) << "whatever the visitor answers";
  EXPECT_EQ(visitor.askedOwner, nullptr);
  embed->Update(nullptr, nullptr);
  embed->AssertValid(&db);
  EXPECT_EQ(ext->calls, "visit visit-below update validate ");
  GUID classId = GUID_NULL;
  EXPECT_EQ(embed->GetExtClassID(&classId), S_OK);
  EXPECT_EQ(classId, zdm::ClassRow<Extension>::kClassID);
}

// Its walk answers no to every question, so it counts as referring to nothing.
TEST_F(Embed, IsNotSortedBehindWhatItsExtensionRefersTo) {
  ext->relation = RelationTo(target);
  std::vector<OID*> records = {embed->GetOID(), target->GetOID()};
  COIDManager::Sort(records);
  EXPECT_EQ(records.front(), embed->GetOID());
  EXPECT_FALSE(COIDManager::IsAGreaterThanB(records.front(), records.back()));
}

TEST_F(Embed, WithoutExtensionAnswersNothing) {
  auto bare = Make(nullptr);
  EXPECT_EQ(IDsOffered(*bare), "");
  EXPECT_FALSE(bare->JudgeSame(static_cast<IZDMObject*>(bare.Get())));
  EXPECT_FALSE(embed->JudgeSame(static_cast<IZDMObject*>(bare.Get())));
  EXPECT_FALSE(embed->JudgeSame(target.Get())) << "a plain object has none";
  EXPECT_FALSE(embed->JudgeSame(static_cast<IZDMObject*>(nullptr)));
  bare->Update(nullptr, nullptr);
  bare->AssertValid(nullptr);
  ZRefPtr<IZDMObjExt> none;
  EXPECT_EQ(bare->GetExt(none.Out()), 0);
  EXPECT_EQ(none.Get(), nullptr);
  GUID classId = zdm::ClassRow<Extension>::kClassID;
  EXPECT_EQ(bare->GetExtClassID(&classId), E_FAIL);
  EXPECT_EQ(classId, GUID_NULL);
}

TEST_F(Embed, ComparesAndCopiesThroughExtensions) {
  auto otherExt = zdm::Attached(new Extension);
  auto other = Make(otherExt);
  otherExt->number = 5;
  EXPECT_FALSE(embed->JudgeSame(static_cast<IZDMObject*>(other.Get())));
  embed->CopyFrom(static_cast<IZDMObject*>(other.Get()), zdm::kCopyMode);
  EXPECT_EQ(ext->number, 5);
  EXPECT_TRUE(embed->JudgeSame(static_cast<IZDMObject*>(other.Get())));
  embed->CopyFrom(static_cast<IZDMObject*>(embed.Get()), zdm::kCopyMode);
  embed->CopyFrom(target, zdm::kCopyMode);
  EXPECT_EQ(ext->calls, "copy copy-nothing ");
}

TEST_F(Embed, HoldsItsExtensionWhileItLives) {
  EXPECT_EQ(ext->GetReferenceCount(), 2u);
  embed->SetExt(ext.Get());
  EXPECT_EQ(ext->GetReferenceCount(), 2u);
  ZRefPtr<IZDMObjExt> out;
  embed->GetExt(out.Out());
  EXPECT_EQ(ext->GetReferenceCount(), 3u);
  out.Reset();
  embed->SetExt(nullptr);
  EXPECT_EQ(ext->GetReferenceCount(), 1u);
}

TEST_F(Embed, OptionsAreThoseOfTheRecord) {
  const LONGLONG before = embed->GetOID()->GetOptionAllowed();
  EXPECT_FALSE(embed->JudgeOptionAllowed(6));
  embed->AddOptionAllowed(6);
  EXPECT_TRUE(embed->JudgeOptionAllowed(6));
  embed->ClearOptionAllowed(2);
  EXPECT_EQ(embed->GetMask(nullptr), 0xF000000000000004u);
  EXPECT_EQ(embed->GetOID()->GetOptionAllowed(), before);
}

TEST_F(Embed, RecordsThatEndEarlyThrow) {
  ext->relation = RelationTo(target);
  const std::vector<BYTE> record = SavedRecord();
  for (std::size_t size = 0; size < record.size(); ++size) {
    ByteStream stream({record.begin(), record.begin() + static_cast<LONG>(size)});
    EXPECT_EQ(Thrown([&] { embed->LoadEmbedded(&stream, &db); }), E_FAIL) << size;
  }
}

TEST_F(Embed, DamagedRelationsKeepWhatWasReadBefore) {
  ext->relation = RelationTo(target);
  const std::vector<BYTE> one = SavedRecord();
  std::vector<BYTE> two = one;
  two[kCount] = 2;
  two.insert(two.begin() + kFirstClass, one.begin() + kFirstClass,
             one.begin() + kFirstClass + kOneRelation);
  struct Case {
    const char* name;
    std::function<void(std::vector<BYTE>&)> damage;
    HRESULT thrown;
    bool keepsOne;
  };
  const Case cases[] = {
      {"unknown class", [](auto& bytes) { bytes[kFirstClass + kOneRelation] ^= 1; }, E_FAIL, true},
      {"no relation's class",
       [](auto& bytes) {
         const GUID id = zdm::ClassRow<Extension>::kClassID;
         std::memcpy(&bytes[kFirstClass], &id, sizeof(id));
       },
       E_FAIL, false},
      {"count past the end", [](auto& bytes) { bytes[kCount + 3] = 0x7F; }, E_FAIL, true},
      {"negative count", [](auto& bytes) { bytes[kCount + 3] = 0x80; }, S_OK, false}};
  for (const Case& row : cases) {
    std::vector<BYTE> bytes = two;
    row.damage(bytes);
    auto loaded = Make(ext);
    ByteStream stream(bytes);
    EXPECT_EQ(Thrown([&] { loaded->LoadEmbedded(&stream, &db); }), row.thrown) << row.name;
    // One relation to `target` or more, if anything was kept.
    ext->relation = nullptr;
    EXPECT_EQ(loaded->JudgeStoredRelations(), row.name == cases[3].name || !row.keepsOne)
        << row.name;
    ext->relation = RelationTo(target);
  }
}

TEST_F(Embed, NestingIsBounded) {
  std::vector<BYTE> bytes(16, 0);
  const GUID coll = zdm::ClassRow<CZReltnColl>::kClassID;
  for (int depth = 0; depth < 100000; ++depth) {
    bytes.insert(bytes.end(), {1, 0, 0, 0});
    const auto* id = reinterpret_cast<const BYTE*>(&coll);
    bytes.insert(bytes.end(), id, id + sizeof(coll));
  }
  ByteStream stream(bytes);
  EXPECT_EQ(Thrown([&] { embed->LoadEmbedded(&stream, &db); }), E_FAIL);
}

}  // namespace
