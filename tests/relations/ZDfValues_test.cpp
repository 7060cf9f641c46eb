// The nine field values: payloads, copies, stream forms, and what they offer.
#include "zdm/relations/ZDfValues.h"

#include "platform/geometry/CMT.h"
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace {

using namespace zdm::test;
using Bytes = std::vector<BYTE>;

struct Releaser {
  void operator()(ZDfValue* value) const { value->Release(); }
};
using Held = std::unique_ptr<ZDfValue, Releaser>;

Held CloneOf(ZDfValue& value) {
  ZDfValue* copy = nullptr;
  value.Clone(&copy);
  return Held(copy);
}

template <class V, class Payload>
V Of(const Payload& payload) {
  V value;
  value.Value = payload;
  return value;
}

ZDfCComBSTR Text(const OLECHAR* text) { return Of<ZDfCComBSTR>(zdm::Bstr(text)); }

ZDfRelation To(IZObject* object) {
  ZDfRelation value;
  value.Value->SetReltnObj(object);
  return value;
}

Bytes SavedValue(ZDfValue& value) {
  ByteStream stream;
  value.Save(&stream, nullptr);
  return stream.GetBytes();
}

constexpr GUID kGuid = zdm::ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF");

using Creator = ZDfValue* (*)();
constexpr Creator kCreators[] = {
    &ZDfDouble::Creator,   &ZDfGUID::Creator,     &ZDfRelation::Creator,
    &ZDfCComBSTR::Creator, &ZDfElement::Creator,  &ZDfLong::Creator,
    &ZDfBool::Creator,     &ZDfUlongPtr::Creator, &ZDfReltnColl::Creator};

TEST(DfValue, HasTheTypeOfItsPlaceAndADefaultForm) {
  const Bytes forms[] = {Bytes(8, 0),
                         Bytes(16, 0),
                         {0, 0, 0x80, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0},
                         {2, 0, 0, 0, 0, 0},
                         {},
                         Bytes(4, 0),
                         {0},
                         {},
                         Bytes(4, 0)};
  unsigned char type = 1;
  for (const Creator create : kCreators) {
    const Held value(create());
    EXPECT_EQ(value->GetType(), type);
    EXPECT_EQ(SavedValue(*value), forms[type - 1]) << int{type};
    ++type;
  }
}

TEST(DfValue, StartsWithObjectsOfItsOwn) {
  ZDfRelation reltn;
  ASSERT_NE(reltn.Value, nullptr);
  EXPECT_EQ(reltn.Value->GetReferenceCount(), 1u);
  EXPECT_FALSE(reltn.Value->IsReltnDiffusible());
  ZDfReltnColl coll;
  ASSERT_NE(coll.Value, nullptr);
  EXPECT_EQ(coll.Value->GetReferenceCount(), 1u);
  EXPECT_EQ(ZDfElement().Value, nullptr);
}

TEST(DfValue, OnlyValuesOfOneClassCompareOrCopy) {
  for (const Creator left : kCreators) {
    for (const Creator right : kCreators) {
      const Held value(left());
      const Held other(right());
      const Bytes before = SavedValue(*value);
      const bool comparable = left == right && value->GetType() != ZDfReltnColl::kType;
      EXPECT_EQ(value->JudgeSame(other.get()), comparable)
          << int{value->GetType()} << " and " << int{other->GetType()};
      value->CopyFrom(other.get());
      EXPECT_EQ(SavedValue(*value), before);
    }
    const Held value(left());
    EXPECT_FALSE(value->JudgeSame(nullptr));
    value->CopyFrom(nullptr);
  }
}

TEST(DfValue, ComparesPayloads) {
  constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
  const auto thing = zdm::MakeObject<IZDMObject, Thing>();
  const auto other = zdm::MakeObject<IZDMObject, Thing>();
  ZDfRelation none;
  none.Value = nullptr;
  const auto same = [](auto left, auto right) {
    EXPECT_EQ(left.JudgeSame(&right), right.JudgeSame(&left));
    return left.JudgeSame(&right);
  };
  using D = ZDfDouble;
  EXPECT_TRUE(same(Of<D>(1.0), Of<D>(1.0 + CMT::GetDist() / 2)));
  EXPECT_FALSE(same(Of<D>(1.0), Of<D>(1.0 + CMT::GetDist())));
  EXPECT_FALSE(same(Of<D>(kNotANumber), Of<D>(kNotANumber)));
  EXPECT_TRUE(same(Of<ZDfGUID>(kGuid), Of<ZDfGUID>(kGuid)));
  GUID nearly = kGuid;
  nearly.Data4[7] ^= 1;
  EXPECT_FALSE(same(Of<ZDfGUID>(kGuid), Of<ZDfGUID>(nearly)));
  EXPECT_FALSE(same(Of<ZDfLong>(1), Of<ZDfLong>(-1)));
  EXPECT_FALSE(same(Of<ZDfBool>(true), Of<ZDfBool>(false)));
  EXPECT_FALSE(same(Of<ZDfUlongPtr>(1), Of<ZDfUlongPtr>(1ULL << 32 | 1)));
  EXPECT_TRUE(same(Text(OLESTR("a")), Text(OLESTR("a"))));
  EXPECT_FALSE(same(Text(OLESTR("a")), Text(OLESTR("A"))));
  EXPECT_TRUE(same(Text(nullptr), Text(OLESTR(""))));
  EXPECT_TRUE(same(Of<ZDfElement>(thing), Of<ZDfElement>(thing)));
  EXPECT_FALSE(same(Of<ZDfElement>(thing), Of<ZDfElement>(other)));
  EXPECT_TRUE(same(To(thing), To(thing)));
  EXPECT_FALSE(same(To(thing), To(other)));
  EXPECT_TRUE(same(To(nullptr), none));
  ZDfReltnColl coll;
  EXPECT_FALSE(coll.JudgeSame(&coll));
}

/// Clone, CopyFrom, copy construction and assignment of `value`, each handed to `check`.
template <class V>
void ForEachCopy(V& value, const std::function<void(V&, bool shared)>& check) {
  const Held clone = CloneOf(value);
  check(dynamic_cast<V&>(*clone), false);
  V copied;
  copied.CopyFrom(&value);
  check(copied, false);
  V constructed(value);
  check(constructed, true);
  V assigned;
  assigned = value;
  check(assigned, true);
}

TEST(DfValueCopy, PlainPayloadsAreEqual) {
  auto number = Of<ZDfDouble>(2.5);
  ForEachCopy<ZDfDouble>(number, [](ZDfDouble& copy, bool) { EXPECT_EQ(copy.Value, 2.5); });
  auto guid = Of<ZDfGUID>(kGuid);
  ForEachCopy<ZDfGUID>(guid, [](ZDfGUID& copy, bool) { EXPECT_TRUE(copy.Value == kGuid); });
  auto count = Of<ZDfLong>(-3);
  ForEachCopy<ZDfLong>(count, [](ZDfLong& copy, bool) { EXPECT_EQ(copy.Value, -3); });
  auto flag = Of<ZDfBool>(true);
  ForEachCopy<ZDfBool>(flag, [](ZDfBool& copy, bool) { EXPECT_TRUE(copy.Value); });
  auto pointer = Of<ZDfUlongPtr>(1ULL << 40);
  ForEachCopy<ZDfUlongPtr>(pointer,
                           [](ZDfUlongPtr& copy, bool) { EXPECT_EQ(copy.Value, 1ULL << 40); });
}

TEST(DfValueCopy, StringsAreCopiedByBytesAndNullStaysNull) {
  const OLECHAR units[] = {'a', 0, 'b'};
  auto value = Of<ZDfCComBSTR>(zdm::Bstr(units, 3));
  ForEachCopy<ZDfCComBSTR>(value, [&](ZDfCComBSTR& copy, bool) {
    EXPECT_EQ(copy.Value, value.Value);
    EXPECT_NE(copy.Value.Get(), value.Value.Get());
  });
  auto null = Text(nullptr);
  ForEachCopy<ZDfCComBSTR>(null, [](ZDfCComBSTR& copy, bool) { EXPECT_TRUE(copy.Value.IsNull()); });
  const BSTR before = value.Value.Get();
  value.CopyFrom(&value);
  EXPECT_EQ(value.Value.Get(), before);
}

TEST(DfValueCopy, RelationsAreClonedOrShared) {
  const int before = PlainReltn::alive;
  {
    OID oid(0, 0, 7, nullptr);
    ZDfRelation value;
    value.Value->SetReltnOID(&oid);
    value.Value->SetReltnTag('a');
    ForEachCopy<ZDfRelation>(value, [&](ZDfRelation& copy, bool shared) {
      EXPECT_EQ(copy.Value == value.Value, shared);
      EXPECT_EQ(copy.Value->GetReferenceCount() > 1, shared);
      EXPECT_EQ(copy.Value->GetReltnOID(), &oid);
      EXPECT_EQ(copy.Value->GetReltnTag(), 'a');
    });
    value.CopyFrom(&value);
    EXPECT_EQ(value.Value->GetReltnOID(), &oid);
    ZDfRelation none;
    none.Value = nullptr;
    value.CopyFrom(&none);
    EXPECT_EQ(value.Value, nullptr);
    EXPECT_EQ(dynamic_cast<ZDfRelation&>(*CloneOf(none)).Value->GetReltnOID(), nullptr);
  }
  EXPECT_EQ(PlainReltn::alive, before);
}

TEST(DfValueCopy, ElementsAreClonedOrShared) {
  const int before = Thing::alive;
  {
    auto value = Of<ZDfElement>(zdm::MakeObject<IZDMObject, Thing>());
    value.Value->SetID(5);
    ForEachCopy<ZDfElement>(value, [&](ZDfElement& copy, bool shared) {
      EXPECT_EQ(copy.Value == value.Value, shared);
      EXPECT_EQ(copy.Value->GetReferenceCount() > 1, shared);
      EXPECT_EQ(copy.Value->GetID(), 5u);
    });
    ZDfElement same(value);
    same.CopyFrom(&value);
    EXPECT_EQ(same.Value, value.Value) << "the same object stays";
    ZDfElement none;
    EXPECT_EQ(dynamic_cast<ZDfElement&>(*CloneOf(none)).Value, nullptr);
    same.CopyFrom(&none);
    EXPECT_EQ(same.Value, nullptr);
  }
  EXPECT_EQ(Thing::alive, before);
}

TEST(DfValueCopy, CollectionsAreClonedOrShared) {
  auto value = Of<ZDfReltnColl>(MakeReltns("aB"));
  ForEachCopy<ZDfReltnColl>(value, [&](ZDfReltnColl& copy, bool shared) {
    EXPECT_EQ(copy.Value == value.Value, shared);
    EXPECT_EQ(LettersIn(*copy.Value), "aB");
    EXPECT_EQ(copy.Value->GetHead() == value.Value->GetHead(), shared);
  });
  IZReltnColl* before = value.Value;
  value.CopyFrom(&value);
  EXPECT_EQ(value.Value, before);
  ZDfReltnColl none;
  none.Value = nullptr;
  value.CopyFrom(&none);
  EXPECT_EQ(value.Value, nullptr);
}

TEST(DfValueStream, WritesItsPayloadAndReadsItBack) {
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  auto number = Of<ZDfDouble>(-2.0);
  auto guid = Of<ZDfGUID>(kGuid);
  ZDfRelation reltn;
  reltn.Value->SetReltnOID(&oid);
  auto text = Text(OLESTR("ab"));
  auto count = Of<ZDfLong>(-2);
  auto flag = Of<ZDfBool>(true);
  auto coll = Of<ZDfReltnColl>(MakeReltns("A"));
  // clang-format off
  const struct {
    ZDfValue* value;
    Bytes form;
  } rows[] = {
      {&number, {0, 0, 0, 0, 0, 0, 0, 0xC0}},
      {&guid, {0x33, 0x22, 0x11, 0, 0x55, 0x44, 0x77, 0x66,
               0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}},
      {&reltn, {0, 0, 0x80, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 7, 0, 0, 0}},
      {&text, {6, 0, 0, 0, 'a', 0, 'b', 0, 0, 0}},
      {&count, {0xFE, 0xFF, 0xFF, 0xFF}},
      {&flag, {1}},
      {&coll, {0, 0, 0, 0}}};
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(int{row.value->GetType()});
    EXPECT_EQ(SavedValue(*row.value), row.form);
    const Held loaded(kCreators[row.value->GetType() - 1]());
    ByteStream stream(row.form);
    loaded->Load(&stream, &database);
    EXPECT_EQ(stream.GetBytesLeft(), 0u);
    EXPECT_EQ(SavedValue(*loaded), row.form);
    for (std::size_t length = 0; length < row.form.size(); ++length) {
      ByteStream cut(
          Bytes(row.form.begin(), row.form.begin() + static_cast<std::ptrdiff_t>(length)));
      EXPECT_THROW(loaded->Load(&cut, &database), CAtlException) << length;
    }
  }
}

TEST(DfValueStream, ShortReadKeepsThePayload) {
  ByteStream stream(Bytes(3, 1));
  auto number = Of<ZDfDouble>(2.5);
  EXPECT_THROW(number.Load(&stream, nullptr), CAtlException);
  EXPECT_EQ(number.Value, 2.5);
}

TEST(DfValueStream, AnyByteButZeroIsTrue) {
  ByteStream stream({0x80, 0});
  ZDfBool flag;
  flag.Load(&stream, nullptr);
  EXPECT_TRUE(flag.Value);
  flag.Load(&stream, nullptr);
  EXPECT_FALSE(flag.Value);
}

TEST(DfValueStream, DamagedStringLeavesNone) {
  ByteStream odd({3, 0, 0, 0, 'a', 0, 0});
  auto text = Text(OLESTR("old"));
  EXPECT_THROW(text.Load(&odd, nullptr), CAtlException);
  EXPECT_TRUE(text.Value.IsNull());
}

TEST(DfValueStream, LoadingAppendsToTheCollection) {
  ByteStream stream(Saved(*MakeReltns("b")));
  auto value = Of<ZDfReltnColl>(MakeReltns("a"));
  value.Load(&stream, nullptr);
  EXPECT_EQ(LettersIn(*value.Value), "ab");
}

TEST(DfValueStream, ValueWithoutItsObjectIsStoredLikeANewOne) {
  ZDfRelation reltn;
  const Bytes form = SavedValue(reltn);
  reltn.Value = nullptr;
  EXPECT_EQ(SavedValue(reltn), form);
  ByteStream stream(form);
  reltn.Load(&stream, nullptr);
  EXPECT_NE(reltn.Value, nullptr);
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
  ZDfReltnColl coll;
  coll.Value = nullptr;
  EXPECT_EQ(SavedValue(coll), Bytes(4, 0));
}

TEST(DfValueVisit, RelationsAndCollectionsOfferWhatTheyHold) {
  ZDfRelation reltn;
  reltn.Value->SetReltnTag('r');
  reltn.Value->ClearReltnStatus(ZRS_VALID);
  auto coll = Of<ZDfReltnColl>(MakeReltns("aBc"));
  Recorder visitor;
  EXPECT_FALSE(reltn.Accept(nullptr, nullptr, &visitor));
  EXPECT_EQ(visitor.words, "r") << "also when it is not valid";
  visitor.stopAt = "c";
  EXPECT_TRUE(coll.Accept(nullptr, nullptr, &visitor));
  EXPECT_EQ(visitor.words, "r a c");
  visitor.stopAt = "r";
  EXPECT_TRUE(reltn.Accept(nullptr, nullptr, &visitor));
  reltn.Value = nullptr;
  coll.Value = nullptr;
  EXPECT_FALSE(reltn.Accept(nullptr, nullptr, &visitor));
  EXPECT_FALSE(coll.Accept(nullptr, nullptr, &visitor));
}

}  // namespace
