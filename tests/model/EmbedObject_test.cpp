// Embedded objects: what they leave to their extension, and what they store beside it.
#include "tests/model/EmbedSupport.h"
#include "tests/model/ModelSupport.h"
#include "tests/support/SlotOf.h"
#include "tests/support/Thrown.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/relations/CZReltnColl.h"

#include <gtest/gtest.h>

ZDM_OBJECT_BODY(zdm::test::Extension)

namespace {

using namespace zdm::test;

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
  EXPECT_EQ(stream.bytes, Hex("DA4AEBF92B055A40B397A3730C9A5AD9 "         // class identifier
                              "04030201 FFFFFFFF 02 01000000000000F0"));  // IDs, format, mask
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
  const Bytes expected =
      Hex("00000000000000000000000000000000 "           // module
          "01000000 56E4F869A823F94BA7655CCF27951F72 "  // one relation, of this class
          "00008000 FFFFFFFF 00000000 77000000 "        // to this target
          "0000 01 00000000000000F0");                  // word, kind, mask
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
  IDNotes visitor(0x77);
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
  for (IZDMObject* other : {static_cast<IZDMObject*>(bare.Get()), target.Get()}) {
    EXPECT_FALSE(bare->JudgeSame(other));
    EXPECT_FALSE(embed->JudgeSame(other));
  }
  bare->Update(nullptr, nullptr);
  bare->AssertValid(nullptr);
  ZRefPtr<IZDMObjExt> none;
  EXPECT_EQ(bare->GetExt(none.Out()), 0);
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
  embed->SetExt(ext.Get());
  EXPECT_EQ(ext->GetReferenceCount(), 2u);
  {
    ZRefPtr<IZDMObjExt> out;
    embed->GetExt(out.Out());
    EXPECT_EQ(ext->GetReferenceCount(), 3u);
  }
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

TEST_F(Embed, DamagedRelationsKeepWhatWasReadBefore) {
  ext->relation = RelationTo(target);
  const Bytes record = SavedRecord();
  const Bytes one(record.begin() + 20, record.begin() + 20 + kOneRelation);
  Bytes unknown = one;
  unknown[0] ^= 1;
  const struct {
    const char* name;
    Bytes relations;
    HRESULT thrown;
    bool keepsNone;
  } rows[] = {{"unknown class", Join({{2, 0, 0, 0}, one, unknown}), E_FAIL, false},
              {"no relation's class",
               Join({{2, 0, 0, 0}, Raw(zdm::ClassRow<Extension>::kClassID), one}), E_FAIL, true},
              {"count past the end", Join({{2, 0, 0, 0x7F}, one, one}), E_FAIL, false},
              {"negative count", Join({{2, 0, 0, 0x80}, one, one}), S_OK, true}};
  for (const auto& row : rows) {
    ext->relation = RelationTo(target);
    auto loaded = Make(ext);
    ByteStream stream(Join({Bytes(16), row.relations, Bytes(11)}));
    EXPECT_EQ(Thrown([&] { loaded->LoadEmbedded(&stream, &db); }), row.thrown) << row.name;
    ext->relation = nullptr;
    EXPECT_EQ(loaded->JudgeStoredRelations(), row.keepsNone) << row.name;
  }
}

TEST_F(Embed, NestingIsBounded) {
  const Bytes level = Join({{1, 0, 0, 0}, Raw(zdm::ClassRow<CZReltnColl>::kClassID)});
  Bytes bytes(16, 0);
  for (int depth = 0; depth < 100000; ++depth) {
    bytes.insert(bytes.end(), level.begin(), level.end());
  }
  ByteStream stream(bytes);
  EXPECT_EQ(Thrown([&] { embed->LoadEmbedded(&stream, &db); }), E_FAIL);
}

}  // namespace
