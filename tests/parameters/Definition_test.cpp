// Definitions and their manager: keys, names, copies, and the exact bytes they are stored as.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/properties/GUID_UNSET.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace zdm::test;

const ZDefinitionExtra kExtra = {
    0x01020304, 0x05060708, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};

IZDMObject* AsObject(IZDefinition* definition) { return zdm::ViewAs<IZDMObject>(definition); }

template <class Object>
Bytes OwnDataOf(Object& object) {
  ByteStream stream;
  object.SaveOwnData(&stream, nullptr);
  return stream.GetBytes();
}

template <class Object>
HRESULT LoadOwnData(Object& object, Bytes bytes) {
  ByteStream stream(std::move(bytes));
  return Thrown([&] { object.LoadOwnData(&stream, nullptr); });
}

TEST(Definition, HoldsThePropertyOrACopy) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  const auto property = MakeProperty();
  property->SetGUID(Key(1));
  definition->SetProperty(property, true);
  definition->SetProperty(property, false);
  EXPECT_EQ(definition->GetProperty(), property) << "the same one changes nothing";
  const auto other = MakeProperty();
  other->SetGUID(Key(2));
  definition->SetProperty(other, false);
  EXPECT_NE(definition->GetProperty(), other);
  EXPECT_TRUE(definition->MatchKey(Key(2)));
}

TEST(Definition, CopiesNumbersPropertyAndExtraData) {
  Definitions db;
  const auto source = db.Make(1, 25, 7);
  source->SetKind(8);
  source->SetFlags(4);
  source->SetFlag(true);
  source->SetExtra(&kExtra);
  const auto copy = zdm::CloneAs<IZDefinition>(source);
  EXPECT_EQ(OwnDataOf(dynamic_cast<CZDefinition&>(*copy)),
            OwnDataOf(dynamic_cast<CZDefinition&>(*source)));
  EXPECT_EQ(copy->GetFlags(), 5u);
  EXPECT_NE(copy->GetProperty(), source->GetProperty());
  EXPECT_TRUE(AsObject(copy)->JudgeSame(AsObject(source)));
  copy->GetProperty()->SetGUID(Key(2));
  EXPECT_FALSE(AsObject(copy)->JudgeSame(AsObject(source)));
  AsObject(copy)->CopyFrom(AsObject(copy), 0);
  copy->SetExtra(copy->GetExtra());
  EXPECT_EQ(std::memcmp(copy->GetExtra(), &kExtra, sizeof(kExtra)), 0) << "of itself: no change";
}

TEST(Definition, AnswersTheNameOfItsIndexThroughItsManager) {
  Definitions db;
  const auto definition = db.Make(1, 3, 7);
  db.manager->RegisterName(7, OLESTR("Walls"));
  EXPECT_EQ(definition->GetDefinitionMgr(), db.manager);
  EXPECT_EQ(TextOf([&](BSTR* out) { definition->GetIndexName(out); }), "Walls");
  EXPECT_EQ(TextOf([&](BSTR* out) { AsObject(definition)->GetName(out); }), "P1");
  AsObject(definition)->SetOwner(nullptr);
  EXPECT_EQ(TextOf([&](BSTR* out) { definition->GetIndexName(out); }), "-");
}

// Definition: index 7, kind 8, property class, property record, extra data.
TEST(DefinitionStream, WritesAndReadsItsRecord) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  const auto property = MakeProperty();
  property->SetLong(2);
  definition->SetProperty(property, true);
  definition->SetIndex(7);
  definition->SetKind(8);
  definition->SetFlags(1);
  const Bytes head =
      Join({Hex("07000000 08000000 BB59146B458E484AB08F146F13E30119"), Saved(property)});
  EXPECT_EQ(OwnDataOf(*definition), Join({head, {0}}));
  definition->SetExtra(&kExtra);
  Bytes expected = Join({head, Hex("01 04030201 08070605 0102030405060708090A0B0C0D0E0F10")});
  EXPECT_EQ(OwnDataOf(*definition), expected);

  const auto loaded = zdm::MakeObject<CZDefinition, CZDefinition>();
  ASSERT_EQ(LoadOwnData(*loaded, expected), S_OK);
  EXPECT_EQ(OwnDataOf(*loaded), expected);
  EXPECT_EQ(loaded->GetFlags(), 0u) << "not stored";

  expected[head.size()] = 2;
  const auto flagged = zdm::MakeObject<CZDefinition, CZDefinition>();
  ASSERT_EQ(LoadOwnData(*flagged, expected), S_OK);
  EXPECT_EQ(flagged->GetExtra(), nullptr) << "exactly 1 says that extra data follow";
}

TEST(DefinitionStream, WritesZerosWithoutAProperty) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  const Bytes expected = Join({Hex("FFFFFFFF 03000000"), Bytes(17)});
  EXPECT_EQ(OwnDataOf(*definition), expected);
  EXPECT_FALSE(definition->MatchKey(GUID_UNSET));
  EXPECT_FALSE(definition->JudgeOptionAllowed(0x0020000000000000)) << "its references do not count";
  definition->SetProperty(MakeProperty(), true);
  ASSERT_EQ(LoadOwnData(*definition, expected), S_OK);
  EXPECT_EQ(definition->GetProperty(), nullptr);
}

TEST(DefinitionStream, KeepsWhatItHasWhenDamaged) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  const auto property = MakeProperty();
  definition->SetProperty(property, true);
  definition->SetIndex(7);
  const Bytes good = OwnDataOf(*definition);
  for (std::size_t length = 0; length < good.size(); ++length) {
    const auto fresh = zdm::MakeObject<CZDefinition, CZDefinition>();
    EXPECT_EQ(LoadOwnData(*fresh, Cut(good, length)), E_FAIL) << length;
  }
  Bytes unknown = good;
  unknown[8] ^= 1;
  unknown[0] = 9;
  EXPECT_EQ(LoadOwnData(*definition, unknown), E_FAIL);
  EXPECT_EQ(definition->GetIndex(), 9) << "what was read stays";
  EXPECT_EQ(definition->GetProperty(), property);
  Bytes noProperty = good;
  const GUID manager = CZDMObjMgr::kClassID;
  std::memcpy(noProperty.data() + 8, &manager, sizeof(manager));
  EXPECT_EQ(LoadOwnData(*definition, noProperty), E_FAIL) << "a class that is no property";
}

TEST(DefinitionMgr, FindsTheFirstValidDefinitionOfAKey) {
  Definitions db;
  const GUID key = Key(1);
  const ZRefPtr<IZDefinition> definitions[] = {db.Make(1), db.Make(1)};
  db.manager->AddTail(zdm::MakeObject<IZObject, CZDMPlainObject>());
  for (IZDefinition* first : definitions) {
    EXPECT_EQ(db.manager->FindDefinition(&key), first);
    EXPECT_TRUE(db.manager->HasDefinition(&key));
    EXPECT_GT(AsObject(first)->GetID(), 0u) << "registered";
    AsObject(first)->SetObjectValid(false);
  }
  EXPECT_EQ(db.manager->FindDefinition(&key), nullptr);
  EXPECT_FALSE(db.manager->HasDefinition(&key));
  db.Make(2)->GetProperty()->SetGUID(GUID_NULL);
  EXPECT_EQ(db.manager->FindDefinition(&GUID_NULL), nullptr);
}

TEST(DefinitionMgr, SortsKeysByRegistrationOfTheirNames) {
  const auto manager = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  for (const LONG key : {5, 2, 9}) manager->RegisterName(key, OLESTR("n"));
  std::vector<LONG> keys = {9, 40, 2, -1, 5};
  manager->SortKeysByRegistration(keys);
  EXPECT_EQ(keys, (std::vector<LONG>{5, 2, 9, 40, -1})) << "those without a name come last";
  manager->RegisterName(5, OLESTR("again"));
  manager->SortKeysByRegistration(keys);
  EXPECT_EQ(keys, (std::vector<LONG>{2, 9, 5, 40, -1}));
  EXPECT_EQ(manager->GetNameTable()->size(), 3u);
  EXPECT_EQ(TextOf([&](BSTR* out) { manager->GetNameByKey(5, out); }), "again");
  EXPECT_EQ(TextOf([&](BSTR* out) { manager->GetNameByKey(6, out); }), "Unknown");
}

// Manager's name and current object, then two names, the later one registered first.
const Bytes kManagerRecord =
    Hex("020000000000 00000000 02000000 "      // name "", none, count
        "01000000 FEFFFFFF 0400000061000000 "  // -2: "a"
        "00000000 03000000 00000000");         // 3: null

TEST(DefinitionMgrStream, WritesAndReadsNames) {
  const auto manager = zdm::MakeObject<CZDefinitionMgr, CZDefinitionMgr>();
  EXPECT_EQ(TextOf([&](BSTR* out) { manager->GetName(out); }), "*DefinitionMgr");
  manager->SetName(nullptr);
  manager->RegisterName(3, nullptr);
  manager->RegisterName(-2, OLESTR("a"));
  EXPECT_EQ(OwnDataOf(*manager), kManagerRecord);

  const auto loaded = zdm::MakeObject<CZDefinitionMgr, CZDefinitionMgr>();
  loaded->RegisterName(3, OLESTR("replaced"));
  ASSERT_EQ(LoadOwnData(*loaded, kManagerRecord), S_OK);
  EXPECT_EQ(OwnDataOf(*loaded), kManagerRecord);
}

TEST(DefinitionMgrStream, RefusesNamesThatAreNotThere) {
  for (const BYTE count : Bytes{3, 255}) {
    Bytes bytes = kManagerRecord;
    bytes[10] = count;
    const auto manager = zdm::MakeObject<CZDefinitionMgr, CZDefinitionMgr>();
    EXPECT_EQ(LoadOwnData(*manager, bytes), E_FAIL) << int{count};
  }
  Bytes negative = kManagerRecord;
  negative[13] = 0x80;
  const auto manager = zdm::MakeObject<CZDefinitionMgr, CZDefinitionMgr>();
  EXPECT_EQ(LoadOwnData(*manager, negative), S_OK);
  EXPECT_TRUE(manager->GetNameTable()->empty());
}

}  // namespace
