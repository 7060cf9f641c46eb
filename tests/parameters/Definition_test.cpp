// Definitions and their manager: keys, names, copies, and the exact bytes they are stored as.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZPropertyColl.h"

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

TEST(Definition, StartsWithoutProperty) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  EXPECT_EQ(definition->GetIndex(), -1);
  EXPECT_EQ(definition->GetKind(), 3u);
  EXPECT_EQ(definition->GetFlags(), 0u);
  EXPECT_EQ(definition->GetExtra(), nullptr);
  EXPECT_EQ(definition->PropertyCall(), 0u);
  EXPECT_FALSE(definition->MatchKey(GUID_UNSET));
  GUID key;
  EXPECT_EQ(*definition->GetKey(&key), GUID_UNSET);
  EXPECT_FALSE(definition->JudgeOptionAllowed(0x0020000000000000)) << "its references do not count";
  definition->SetFlags(0x80000000);
  definition->SetFlag(true);
  EXPECT_EQ(definition->GetFlags(), 0x80000001);
}

TEST(Definition, HoldsThePropertyOrACopy) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  const auto property = MakeProperty();
  property->SetGUID(Key(1));
  definition->SetProperty(property, true);
  EXPECT_EQ(definition->GetProperty(), property);
  definition->SetProperty(property, false);
  EXPECT_EQ(definition->GetProperty(), property) << "the same one changes nothing";
  const auto other = MakeProperty();
  other->SetGUID(Key(2));
  definition->SetProperty(other, false);
  EXPECT_NE(definition->GetProperty(), other);
  EXPECT_TRUE(definition->MatchKey(Key(2)));
  definition->SetProperty(nullptr, false);
  EXPECT_EQ(definition->GetProperty(), nullptr);
}

TEST(Definition, CopiesNumbersPropertyAndExtraData) {
  Definitions db;
  const auto source = db.Make(1, 25, 7);
  source->SetKind(8);
  source->SetFlags(5);
  source->SetExtra(&kExtra);
  const auto copy = zdm::CloneAs<IZDefinition>(source);
  EXPECT_EQ(copy->GetKind(), 8u);
  EXPECT_EQ(copy->GetIndex(), 7);
  EXPECT_EQ(copy->GetFlags(), 5u);
  EXPECT_NE(copy->GetProperty(), source->GetProperty());
  EXPECT_NE(copy->GetExtra(), source->GetExtra());
  EXPECT_EQ(std::memcmp(copy->GetExtra(), &kExtra, sizeof(kExtra)), 0);
  EXPECT_TRUE(AsObject(copy)->JudgeSame(AsObject(source)));
  copy->GetProperty()->SetGUID(Key(2));
  EXPECT_FALSE(AsObject(copy)->JudgeSame(AsObject(source)));
  AsObject(copy)->CopyFrom(AsObject(copy), 0);
  copy->SetExtra(copy->GetExtra());
  EXPECT_EQ(std::memcmp(copy->GetExtra(), &kExtra, sizeof(kExtra)), 0) << "of itself: no change";
  EXPECT_EQ(NameOf(copy->GetProperty()), "P1");
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

TEST(Definition, AppendsACopyOfItsProperty) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto sheet = zdm::NewOf<IZPropertyColl, CZPropertyColl>();
  definition->AddPropertyCopyTo(sheet);
  zdm::MakeObject<IZDefinition, CZDefinition>()->AddPropertyCopyTo(sheet);
  ASSERT_EQ(sheet->GetCount(), 1);
  EXPECT_NE(sheet->GetHead(), definition->GetProperty());
  EXPECT_EQ(NameOf(sheet->GetHead()), "P1");
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
  Bytes expected = {7,    0,    0,    0,    8,    0,    0,    0,      // index, kind
                    0xBB, 0x59, 0x14, 0x6B, 0x45, 0x8E, 0x48, 0x4A,   // CZProperty
                    0xB0, 0x8F, 0x14, 0x6F, 0x13, 0xE3, 0x01, 0x19};  //
  const Bytes record = Saved(property);
  expected.insert(expected.end(), record.begin(), record.end());
  const std::size_t flagAt = expected.size();
  expected.push_back(0);
  EXPECT_EQ(OwnDataOf(*definition), expected);

  definition->SetExtra(&kExtra);
  expected.back() = 1;
  for (const BYTE byte : Bytes{4, 3, 2, 1, 8, 7, 6, 5}) expected.push_back(byte);
  for (BYTE byte = 1; byte <= 16; ++byte) expected.push_back(byte);
  EXPECT_EQ(OwnDataOf(*definition), expected);

  const auto loaded = zdm::MakeObject<CZDefinition, CZDefinition>();
  ASSERT_EQ(LoadOwnData(*loaded, expected), S_OK);
  EXPECT_EQ(OwnDataOf(*loaded), expected);
  EXPECT_EQ(loaded->GetFlags(), 0u) << "not stored";

  expected[flagAt] = 2;
  const auto flagged = zdm::MakeObject<CZDefinition, CZDefinition>();
  ASSERT_EQ(LoadOwnData(*flagged, expected), S_OK);
  EXPECT_EQ(flagged->GetExtra(), nullptr) << "exactly 1 says that extra data follow";
}

TEST(DefinitionStream, WritesZerosWithoutAProperty) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  Bytes expected(25);
  for (int i = 0; i < 4; ++i) expected[static_cast<std::size_t>(i)] = 0xFF;
  expected[4] = 3;
  EXPECT_EQ(OwnDataOf(*definition), expected);
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
    const Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
    const auto fresh = zdm::MakeObject<CZDefinition, CZDefinition>();
    EXPECT_EQ(LoadOwnData(*fresh, cut), E_FAIL) << length;
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

TEST(DefinitionStream, NeverMakesAnObjectThatAValueNames) {
  const auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
  definition->SetProperty(MakeProperty(), true);
  Bytes bytes = OwnDataOf(*definition);
  const std::size_t valueAt = 24 + 6 + 6 + 16;  // head, two empty names, GUID
  const Bytes empty(bytes.begin() + valueAt, bytes.begin() + valueAt + 8);
  ASSERT_EQ(empty, Bytes({0, 0, 2, 0, 0, 0, 0, 0})) << "type 0 and an empty string";
  Element::zInit();
  Bytes object = {13, 0};  // an object, and its class
  const GUID classId = Element::kClassID;
  object.resize(2 + sizeof(classId));
  std::memcpy(object.data() + 2, &classId, sizeof(classId));
  bytes.erase(bytes.begin() + valueAt, bytes.begin() + valueAt + 8);
  bytes.insert(bytes.begin() + valueAt, object.begin(), object.end());
  const int before = Element::alive;
  EXPECT_EQ(LoadOwnData(*definition, bytes), E_FAIL);
  EXPECT_EQ(Element::alive, before);
}

TEST(DefinitionMgr, FindsTheFirstValidDefinitionOfAKey) {
  Definitions db;
  const auto first = db.Make(1);
  const auto second = db.Make(1);
  db.manager->AddTail(zdm::MakeObject<IZObject, CZDMPlainObject>());
  const GUID key = Key(1);
  EXPECT_EQ(db.manager->FindDefinition(&key), first);
  AsObject(first)->SetObjectValid(false);
  EXPECT_EQ(db.manager->FindDefinition(&key), second);
  EXPECT_TRUE(db.manager->HasDefinition(&key));
  AsObject(second)->SetObjectValid(false);
  EXPECT_EQ(db.manager->FindDefinition(&key), nullptr);
  EXPECT_FALSE(db.manager->HasDefinition(&key));
  const auto zero = db.Make(2);
  zero->GetProperty()->SetGUID(GUID_NULL);
  EXPECT_EQ(db.manager->FindDefinition(&GUID_NULL), nullptr);
  EXPECT_FALSE(db.manager->HasDefinition(&GUID_NULL));
  EXPECT_GT(AsObject(zero)->GetID(), 0u) << "registered";
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
const Bytes kManagerRecord = {
    2, 0, 0, 0, 0,   0,   0,   0,   0, 0,                      // name "", none
    2, 0, 0, 0,                                                // count
    1, 0, 0, 0, 254, 255, 255, 255, 4, 0, 0, 0, 'a', 0, 0, 0,  // -2: "a"
    0, 0, 0, 0, 3,   0,   0,   0,   0, 0, 0, 0,                // 3: null
};

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
