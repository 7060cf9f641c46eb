// The stored form of properties: exact bytes, what is kept, and damage.
#include "platform/ole/Variant.h"
#include "tests/properties/PropertySupport.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZPropertyArray.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/properties/IZPropertyPairs.h"
#include "zdm/properties/IZPropertyPoint.h"
#include "zdm/properties/IZPropertyScaleIndex.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

// A property in which no field is like another, its value the number 2.
const Bytes kRecord =
    Hex("0400000061000000 020000000000 "                        // name, display name
        "11111111222233334444555555555509 030002000000 "        // GUID, value
        "11010000 22010000 33010000 4401 "                      // extra 1 to 4
        "000000000000F83F 0000000000000440 FEFFFFFF 08000000 "  // from 1.5 to 2.5, from -2 to 8
        "55010000 A682");                                       // type, flags

void FillAsRecord(IZProperty& property) {
  property.SetName(OLESTR("a"));
  property.SetGUID(Key(9));
  property.SetLong(2);
  property.SetExtra1(0x111);
  property.SetExtra2(0x122);
  property.SetExtra3(0x133);
  property.SetExtra4(0x144);
  property.SetIntRange(-2, 8, false, false);
  property.SetRange(1.5, 2.5, true, false);
  property.SetType(0x155);
  property.SetValueUniform(false);
  property.SetFlag02(true);
  property.SetLinked(true);
}

TEST(PropertyStream, WritesTheRecord) {
  const auto property = MakeProperty();
  FillAsRecord(*property);
  Bytes expected = kRecord;
  expected.back() = 0;  // bits without an operation come from streams only
  EXPECT_EQ(Saved(property), expected);
}

TEST(PropertyStream, OfANewPropertyIsUnsetAndUniform) {
  EXPECT_EQ(Saved(MakeProperty()), Join({Hex("020000000000 020000000000"),
                                         Raw(GUID_UNSET),
                                         Hex("0000020000000000 00000000 00000000 FFFFFFFF 0000"),
                                         Bytes(28),
                                         {0x30, 0}}));
}

TEST(PropertyStream, ReadsAndCopiesTheRecord) {
  const auto property = MakeProperty();
  property->SetString(OLESTR("replaced"));
  ASSERT_EQ(Load(property, kRecord), S_OK);
  EXPECT_EQ(Saved(property), kRecord);

  Bytes copied = kRecord;  // all but extra 3 and 4 and the ranges
  std::fill_n(copied.begin() + 44, 4, BYTE{0xFF});
  std::fill_n(copied.begin() + 48, 26, BYTE{0});
  EXPECT_EQ(Saved(zdm::CloneAs<IZProperty>(property)), copied);
}

TEST(PropertyStream, NullNamesReadAsEmpty) {
  const auto property = MakeProperty();
  const Bytes behindNames(kRecord.begin() + 14, kRecord.end());
  ASSERT_EQ(Load(property, Join({Bytes(4), Bytes(4), behindNames})), S_OK);
  EXPECT_EQ(Saved(property), Join({Hex("020000000000 020000000000"), behindNames}));
}

// Two entries: 5 "b", 0x80010000 null.
const Bytes kEntries = Hex("02000000 05000000 0400000062000000 00000180 00000000");

TEST(IndexPropertyStream, WritesAndReadsItsEntries) {
  const auto index = zdm::NewOf<IZPropertyIndex, CZPropertyIndex>();
  ASSERT_EQ(Load(index, Saved(MakeProperty())), E_FAIL);
  index->AddEntry(5, OLESTR("b"));
  index->AddEntry(0x80010000, nullptr);
  const Bytes expected = Join({kRecord, kEntries});
  const auto loaded = zdm::NewOf<IZPropertyIndex, CZPropertyIndex>();
  ASSERT_EQ(Load(loaded, expected), S_OK);
  EXPECT_EQ(Saved(loaded), expected);
  const Bytes own = Saved(index);
  EXPECT_TRUE(std::equal(kEntries.rbegin(), kEntries.rend(), own.rbegin()));
  ASSERT_EQ(Load(loaded, own), S_OK);
  EXPECT_EQ(loaded->GetEntryCount(), 4u);  // appended
}

TEST(PropertyStream, HoldsNoMembersEntriesNorCoordinates) {
  const auto fill = [](const auto& list) { list->AddTail(MakeProperty()); };
  const auto array = zdm::NewOf<IZPropertyArray, CZPropertyArray>();
  const auto coll = zdm::NewOf<IZPropertyColl, CZPropertyColl>();
  const auto pairs = zdm::NewOf<IZPropertyPairs, CZPropertyPairs>();
  const auto group = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  const auto groups = zdm::NewOf<IZPropertyGroupColl, CZPropertyGroupColl>();
  const auto scales = zdm::NewOf<IZPropertyScaleIndex, CZPropertyScaleIndex>();
  const auto point = zdm::NewOf<IZPropertyPoint, CZPropertyPoint>();
  fill(array);
  fill(coll);
  fill(pairs);
  group->SetName(OLESTR("group"));
  fill(group->GetProperties());
  groups->AddTail(group);
  scales->AddStandardScales();
  point->SetPoint({1, 2, 3});
  for (IZObject* full :
       std::initializer_list<IZObject*>{array, coll, pairs, group, groups, scales, point}) {
    auto* property = zdm::ViewAs<IZProperty>(full);
    const auto plain = MakeProperty();
    plain->SetType(property->GetType());
    EXPECT_EQ(Saved(property), Saved(plain)) << property->GetType();
  }
}

TEST(PropertyStream, DamageChangesNothing) {
  Bytes whole = Join({kRecord, kEntries});
  const auto index = zdm::NewOf<IZPropertyIndex, CZPropertyIndex>();
  index->SetString(OLESTR("kept"));
  index->AddEntry(1, OLESTR("one"));
  const Bytes before = Saved(index);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(Load(index, Cut(whole, size)), E_FAIL) << size;
    ASSERT_EQ(Saved(index), before) << size;
  }
  const struct {
    const char* name;
    std::size_t at;
    Bytes bytes;
  } rows[] = {
      {"name of an odd length", 0, {5}},
      {"name past the end", 0, {0xFE, 0xFF, 0xFF, 0xFF}},
      {"value without a stored form", 30, {0x0C, 0x20}},
      {"object by its class", 30, {VT_UNKNOWN, 0}},
      {"more entries than bytes", kRecord.size(), {4, 0, 0, 0}},
      {"entries by the thousand million", kRecord.size(), {0xFF, 0xFF, 0xFF, 0x7F}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bytes damaged = whole;
    std::copy(row.bytes.begin(), row.bytes.end(),
              damaged.begin() + static_cast<std::ptrdiff_t>(row.at));
    EXPECT_EQ(Load(index, damaged), E_FAIL);
    EXPECT_EQ(Saved(index), before);
  }
  whole[kRecord.size() + 3] = 0x80;  // a negative number of entries is none
  EXPECT_EQ(Load(index, whole), S_OK);
  EXPECT_EQ(index->GetEntryCount(), 1u);
}

}  // namespace
