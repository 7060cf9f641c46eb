// The nine field values: payloads, copies, stream forms, what they offer; and their registry.
#include "zdm/relations/ZDfValues.h"

#include "platform/geometry/CMT.h"
#include "tests/relations/ReltnSupport.h"
#include "tests/support/Cuts.h"
#include "zdm/identity/OID.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/relations/ZDfValueRxClass.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zdm::test;

HeldValue CloneOf(ZDfValue& value) {
  ZDfValue* copy = nullptr;
  value.Clone(&copy);
  return HeldValue(copy);
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
  return Written([&](IZStream* stream) { value.Save(stream, nullptr); });
}

constexpr GUID kGuid = zdm::ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF");

using Creator = ZDfValue* (*)();
constexpr Creator kCreators[] = {
    &ZDfDouble::Creator,   &ZDfGUID::Creator,     &ZDfRelation::Creator,
    &ZDfCComBSTR::Creator, &ZDfElement::Creator,  &ZDfLong::Creator,
    &ZDfBool::Creator,     &ZDfUlongPtr::Creator, &ZDfReltnColl::Creator};

TEST(DfValue, HasTheTypeOfItsPlaceADefaultFormAndObjectsOfItsOwn) {
  const Bytes forms[] = {Bytes(8),
                         Bytes(16),
                         Hex("00008000 FFFFFFFF 00000000 00000000"),
                         Hex("02000000 0000"),
                         {},
                         Bytes(4),
                         Bytes(1),
                         {},
                         Bytes(4)};
  unsigned char type = 1;
  for (const Creator create : kCreators) {
    const HeldValue value(create());
    EXPECT_EQ(value->GetType(), type);
    EXPECT_EQ(SavedValue(*value), forms[type - 1]) << int{type};
    ++type;
  }
  EXPECT_EQ(ZDfRelation().Value->GetReferenceCount(), 1u);
  EXPECT_EQ(ZDfReltnColl().Value->GetReferenceCount(), 1u);
  EXPECT_EQ(ZDfElement().Value, nullptr);
}

TEST(DfValue, OnlyValuesOfOneClassCompareOrCopy) {
  for (const Creator left : kCreators) {
    for (const Creator right : kCreators) {
      const HeldValue value(left());
      const HeldValue other(right());
      const Bytes before = SavedValue(*value);
      const bool comparable = left == right && value->GetType() != ZDfReltnColl::kType;
      EXPECT_EQ(value->JudgeSame(other.get()), comparable)
          << int{value->GetType()} << " and " << int{other->GetType()};
      value->CopyFrom(other.get());
      EXPECT_EQ(SavedValue(*value), before);
    }
    const HeldValue value(left());
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
  const HeldValue clone = CloneOf(value);
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

/// As the forms that are saved.
template <class V>
void ExpectCopied(V value) {
  const Bytes form = SavedValue(value);
  SCOPED_TRACE(int{value.GetType()});
  ForEachCopy<V>(value, [&](V& copy, bool shared) {
    EXPECT_EQ(SavedValue(copy), form) << shared;
    EXPECT_TRUE(copy.JudgeSame(&value));
  });
}

TEST(DfValueCopy, PlainPayloadsAreEqual) {
  ExpectCopied(Of<ZDfDouble>(2.5));
  ExpectCopied(Of<ZDfGUID>(kGuid));
  ExpectCopied(Of<ZDfLong>(-3));
  ExpectCopied(Of<ZDfBool>(true));
  ExpectCopied(Of<ZDfUlongPtr>(1ULL << 40));
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
  BSTR before = value.Value.Get();
  value.CopyFrom(&value);
  EXPECT_EQ(value.Value.Get(), before);
}

/// What holds an object: clones and CopyFrom clone it, the language's copies share it, and a copy
/// of nothing lets it go. An element keeps what it has when that is copied; a relation is cloned.
template <class V>
void ExpectClonedOrShared(V value, const std::function<void(V& copy)>& expectLike) {
  SCOPED_TRACE(int{value.GetType()});
  ForEachCopy<V>(value, [&](V& copy, bool shared) {
    EXPECT_EQ(copy.Value == value.Value, shared);
    EXPECT_EQ(copy.Value->GetReferenceCount() > 1, shared);
    expectLike(copy);
  });
  const auto held = value.Value;
  V same(value);
  same.CopyFrom(&value);
  EXPECT_TRUE(same.Value == held || value.GetType() != ZDfElement::kType);
  value.CopyFrom(&value);
  expectLike(value);
  EXPECT_TRUE(value.Value == held || value.GetType() == ZDfRelation::kType);
  V none;
  none.Value = nullptr;
  value.CopyFrom(&none);
  EXPECT_EQ(value.Value, nullptr);
}

TEST(DfValueCopy, ObjectsAreClonedOrShared) {
  const int reltns = PlainReltn::alive;
  const int things = Thing::alive;
  {
    OID oid(0, 0, 7, nullptr);
    ZDfRelation reltn;
    reltn.Value->SetReltnOID(&oid);
    reltn.Value->SetReltnTag('a');
    ExpectClonedOrShared<ZDfRelation>(reltn, [&](ZDfRelation& copy) {
      EXPECT_EQ(copy.Value->GetReltnOID(), &oid);
      EXPECT_EQ(copy.Value->GetReltnTag(), 'a');
    });
    auto element = Of<ZDfElement>(zdm::MakeObject<IZDMObject, Thing>());
    element.Value->SetID(5);
    ExpectClonedOrShared<ZDfElement>(element,
                                     [](ZDfElement& copy) { EXPECT_EQ(copy.Value->GetID(), 5u); });
    const auto coll = Of<ZDfReltnColl>(MakeReltns("aB"));
    ExpectClonedOrShared<ZDfReltnColl>(coll, [&](ZDfReltnColl& copy) {
      EXPECT_EQ(LettersIn(*copy.Value), "aB");
      EXPECT_EQ(copy.Value->GetHead() == coll.Value->GetHead(), copy.Value == coll.Value);
    });
    ZDfRelation none;
    none.Value = nullptr;
    EXPECT_EQ(dynamic_cast<ZDfRelation&>(*CloneOf(none)).Value->GetReltnOID(), nullptr);
    ZDfElement empty;
    EXPECT_EQ(dynamic_cast<ZDfElement&>(*CloneOf(empty)).Value, nullptr);
  }
  EXPECT_EQ(PlainReltn::alive, reltns);
  EXPECT_EQ(Thing::alive, things);
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
  const struct {
    ZDfValue* value;
    const char* form;
  } rows[] = {{&number, "00000000 000000C0"},
              {&guid, "33221100 5544 7766 8899AABBCCDDEEFF"},
              {&reltn, "00008000 FFFFFFFF 00000000 07000000"},
              {&text, "06000000 6100 6200 0000"},
              {&count, "FEFFFFFF"},
              {&flag, "01"},
              {&coll, "00000000"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(int{row.value->GetType()});
    const Bytes form = Hex(row.form);
    EXPECT_EQ(SavedValue(*row.value), form);
    const HeldValue loaded(kCreators[row.value->GetType() - 1]());
    ByteStream stream(form);
    loaded->Load(&stream, &database);
    EXPECT_EQ(stream.GetBytesLeft(), 0u);
    EXPECT_EQ(SavedValue(*loaded), form);
    // What was there stays, but for a text, of which a damaged one leaves nothing.
    const HeldValue other(kCreators[row.value->GetType() - 1]());
    const Bytes before = SavedValue(*other);
    for (const HeldValue* each : {&loaded, &other}) {
      ExpectShortStreamsThrow(form, [&](IZStream* cut) { (*each)->Load(cut, &database); });
    }
    EXPECT_EQ(SavedValue(*loaded) == form, row.value != &text);
    EXPECT_EQ(SavedValue(*other) == before, row.value != &text);
  }
}

TEST(DfValueStream, ReadsAnyByteButZeroAsTrueAppendsToACollectionAndTakesADamagedString) {
  ByteStream stream(Bytes{0x80, 0} + Saved(*MakeReltns("b")) + Hex("03000000 61 00 00"));
  ZDfBool flag;
  flag.Load(&stream, nullptr);
  EXPECT_TRUE(flag.Value);
  flag.Load(&stream, nullptr);
  EXPECT_FALSE(flag.Value);
  auto coll = Of<ZDfReltnColl>(MakeReltns("a"));
  coll.Load(&stream, nullptr);
  EXPECT_EQ(LettersIn(*coll.Value), "ab");
  auto text = Text(OLESTR("old"));
  EXPECT_THROW(text.Load(&stream, nullptr), CAtlException);
  EXPECT_TRUE(text.Value.IsNull());
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

ZDfValueRxClass* NewRecord(unsigned char type, ZDfValue* (*creator)()) {
  auto* record = new ZDfValueRxClass;
  record->type = type;
  record->creator = creator;
  return record;
}

/// The type of the value made for `code`; 0 for none.
int TypeMadeFor(unsigned char code) {
  ZDfValue* value = ZDfValueRxClass::CreateZDfValue(code);
  if (value == nullptr) return 0;
  const int type = value->GetType();
  value->Release();
  return type;
}

std::vector<int> Chain() {
  std::vector<int> types;
  for (const auto* at = ZDfValueRxClass::g_pDesc; at != nullptr; at = at->next) {
    types.push_back(at->type);
  }
  return types;
}

class DfValueRegistry : public testing::Test {
 protected:
  void SetUp() override { ZDfValueRxClass::ReleaseRxClassChain(); }
  void TearDown() override { ZDfValueRxClass::ReleaseRxClassChain(); }
};

TEST_F(DfValueRegistry, IsEmptyUntilTheModuleIsRegisteredWhichTwiceChangesNothing) {
  EXPECT_EQ(ZDfValueRxClass::g_pDesc, nullptr);
  EXPECT_EQ(TypeMadeFor(1), 0);
  EXPECT_EQ(DllRegisterZModule(), S_OK);
  const ZDfValueRxClass* record = ZDfGUID::gpDesc;
  EXPECT_EQ(DllRegisterZModule(), S_OK);
  EXPECT_EQ(ZDfGUID::gpDesc, record);
  for (unsigned char code = 1; code <= 9; ++code) EXPECT_EQ(TypeMadeFor(code), code);
  EXPECT_EQ(TypeMadeFor(0), 0);
  EXPECT_EQ(TypeMadeFor(10), 0);
  // The most recent stands behind the head.
  EXPECT_EQ(Chain(), (std::vector<int>{0, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(ZDfValueRxClass::g_pDesc->creator, nullptr);
  EXPECT_EQ(ZDfReltnColl::gpDesc, ZDfValueRxClass::g_pDesc->next);
  EXPECT_EQ(ZDfDouble::gpDesc->type, 1);
}

TEST_F(DfValueRegistry, FirstRegistrationOfACodeWins) {
  ZDfLong::rxInit();
  ASSERT_TRUE(ZDfValueRxClass::AddRxClass(NewRecord(7, &ZDfLong::Creator)));
  const std::unique_ptr<ZDfValueRxClass> late(NewRecord(6, &ZDfBool::Creator));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(late.get()));
  const std::unique_ptr<ZDfValueRxClass> none(NewRecord(0, &ZDfBool::Creator));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(none.get()));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(nullptr));
  EXPECT_EQ(TypeMadeFor(6), 6);
  EXPECT_EQ(TypeMadeFor(0), 0);
  ZDfBool::rxInit();
  EXPECT_EQ(TypeMadeFor(7), 6) << "the host was first";
  EXPECT_EQ(ZDfBool::gpDesc, nullptr);
  EXPECT_EQ(Chain(), (std::vector<int>{0, 7, 6}));
}

TEST_F(DfValueRegistry, UnregisteringLeavesNothing) {
  DllRegisterZModule();
  EXPECT_EQ(DllUnRegisterZModule(), S_OK);
  EXPECT_EQ(DllUnRegisterZModule(), S_OK);
  EXPECT_EQ(ZDfValueRxClass::g_pDesc, nullptr);
  for (const ZDfValueRxClass* record :
       {ZDfDouble::gpDesc, ZDfGUID::gpDesc, ZDfRelation::gpDesc, ZDfCComBSTR::gpDesc,
        ZDfElement::gpDesc, ZDfLong::gpDesc, ZDfBool::gpDesc, ZDfUlongPtr::gpDesc,
        ZDfReltnColl::gpDesc}) {
    EXPECT_EQ(record, nullptr);
  }
  DllRegisterZModule();
  EXPECT_EQ(TypeMadeFor(4), 4);
}

}  // namespace
