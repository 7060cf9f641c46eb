// The property that all classes share: values by type, ranges, copying, merging.
#include "platform/ole/Variant.h"
#include "tests/properties/PropertySupport.h"
#include "tests/support/Flags.h"
#include "zdm/properties/IZPropertyYesNo.h"
#include "zdm/relations/ZDfValues.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zdm::test;

VARIANT Plain(VARTYPE type, ULONGLONG bits = 0) {
  VARIANT value;
  VariantInit(&value);
  value.vt = type;
  value.ullVal = bits;
  return value;
}

TEST(Property, GettersConvertNothing) {
  // One setter for each type, and whether each getter sees it.
  const struct {
    const char* name;
    void (*set)(IZProperty&);
    VARTYPE type;
  } rows[] = {
      {"none", [](IZProperty& p) { p.ResetValue(); }, VT_EMPTY},
      {"short", [](IZProperty& p) { p.SetShort(7); }, VT_I2},
      {"double", [](IZProperty& p) { p.SetDouble(7); }, VT_R8},
      {"text", [](IZProperty& p) { p.SetString(OLESTR("7")); }, VT_BSTR},
      {"unsigned", [](IZProperty& p) { p.SetULong(7); }, VT_UI4},
      {"long", [](IZProperty& p) { p.SetLong(7); }, VT_I4},
      {"flag", [](IZProperty& p) { p.SetBool(true); }, VT_BOOL},
  };
  const auto property = MakeProperty();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    row.set(*property);
    zdm::Variant value;
    property->GetVariant(value.Out());
    EXPECT_EQ(value.type(), row.type);
    EXPECT_EQ(property->GetShort(), row.type == VT_I2 ? 7 : -1);
    EXPECT_EQ(property->GetDouble(), row.type == VT_R8 ? 7.0 : 0.0);
    EXPECT_EQ(TextOf([&](BSTR* out) { property->GetString(out); }),
              row.type == VT_BSTR ? "7" : "-");
    EXPECT_EQ(property->GetULong(), row.type == VT_UI4 ? 7u : 0u);
    EXPECT_EQ(property->GetLong(), row.type == VT_I4 ? 7 : -1);
    EXPECT_EQ(property->GetBool(), row.type == VT_BOOL);
  }
  property->SetVariant(Plain(VT_BOOL, 2));
  EXPECT_TRUE(property->GetBool());
}

TEST(Property, FlagsAreApart) {
  using I = IZProperty;
  const auto property = MakeProperty();
  ExpectFlagsApart<I>(*property.Get(),
                      {{0x02, &I::IsFlag02, &I::SetFlag02},
                       {0x04, &I::IsLinked, &I::SetLinked},
                       {0x08, &I::IsReadOnly, &I::SetReadOnly},
                       {0x10, &I::IsValueUniform, &I::SetValueUniform},
                       {0x20, &I::IsFlag20, &I::SetFlag20},
                       {0x40, &I::IsFlag40, &I::SetFlag40}},
                      [&] { return Saved(property).rbegin()[1]; });  // of the last two bytes
}

TEST(PropertyRange, HoldsItsEndsWithinTheTolerance) {
  const struct {
    double minimum, maximum;
    bool withMinimum, withMaximum;
    double value;
    bool isInside;
  } rows[] = {
      {5, 5, false, false, 1e9, true},
      {5, 5.000001, false, false, -1e9, true},
      {0, 10, false, true, 10, true},
      {0, 10, false, true, 0, false},
      {0, 10, false, true, 5, true},
      {0, 10, true, false, 0.000009, true},
      {0, 10, true, false, -0.000009, true},
      {0, 10, false, false, 0.000009, false},
      {0, 10, false, false, 0.00002, true},
      {0, 10, true, true, 10.00002, false},
      {0, 10, true, true, -1, false},
      {10, 0, true, true, 5, false},
      {0, 10, true, true, std::numeric_limits<double>::quiet_NaN(), false},
  };
  const auto property = MakeProperty();
  for (const auto& row : rows) {
    property->SetRange(row.minimum, row.maximum, row.withMinimum, row.withMaximum);
    EXPECT_EQ(property->IsInRange(row.value), row.isInside)
        << row.minimum << " to " << row.maximum << ": " << row.value;
  }
}

TEST(PropertyRange, OfWholeNumbersIsExactAndSharesTheEnds) {
  const auto property = MakeProperty();
  EXPECT_TRUE(property->IsInIntRange(99));
  property->SetIntRange(0, 10, false, false);
  EXPECT_TRUE(property->IsInIntRange(1) && property->IsInIntRange(9));
  EXPECT_FALSE(property->IsInIntRange(0) || property->IsInIntRange(10));
  property->SetRange(1.5, 2.5, true, false);
  EXPECT_TRUE(property->IsInIntRange(0));
  EXPECT_FALSE(property->IsInIntRange(10) || property->IsInIntRange(-1));
  LONG minimum = 1;
  LONG maximum = 1;
  bool withMinimum = false;
  bool withMaximum = true;
  property->GetIntRange(&minimum, &maximum, &withMinimum, &withMaximum);
  EXPECT_TRUE(minimum == 0 && maximum == 10 && withMinimum && !withMaximum);
}

TEST(PropertyMerge, ComparesValuesOfOneType) {
  const zdm::Variant text = zdm::Variant::FromText(OLESTR("one"));
  const zdm::Variant sameText = zdm::Variant::FromText(OLESTR("one"));
  const zdm::Variant capital = zdm::Variant::FromText(OLESTR("One"));
  const zdm::Variant nullText = zdm::Variant::FromText(nullptr);
  const zdm::Variant emptyText = zdm::Variant::FromText(OLESTR(""));
  const auto real = [](double number) { return zdm::Variant::FromDouble(number).Get(); };
  const struct {
    const char* name;
    VARIANT left, right;
    bool isSame;
  } rows[] = {
      {"close doubles", real(1.000001), real(1.000002), true},
      {"a tolerance apart", real(0), real(1e-5), false},
      {"doubles", real(1.0), real(1.1), false},
      {"infinities", real(std::numeric_limits<double>::infinity()),
       real(std::numeric_limits<double>::infinity()), true},
      {"two nulls", Plain(VT_NULL), Plain(VT_NULL), true},
      {"null and empty", Plain(VT_NULL), Plain(VT_EMPTY), false},
      {"empty and null", Plain(VT_EMPTY), Plain(VT_NULL), false},
      {"empties", Plain(VT_EMPTY), Plain(VT_EMPTY), true},
      {"one number, two types", Plain(VT_I2, 3), Plain(VT_I4, 3), false},
      {"texts", text.Get(), sameText.Get(), true},
      {"capitals", text.Get(), capital.Get(), false},
      {"null and empty text", nullText.Get(), emptyText.Get(), true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto left = MakeProperty();
    const auto right = MakeProperty();
    left->SetVariant(row.left);
    right->SetVariant(row.right);
    EXPECT_EQ(left->MergeWith(right), row.isSame);
    EXPECT_EQ(left->IsValueUniform(), row.isSame);
    EXPECT_TRUE(right->IsValueUniform());
    EXPECT_FALSE(left->IsReadOnly());
  }
  const struct {
    VARTYPE type;
    ULONGLONG one, other;
  } numbers[] = {{VT_I1, 0xFF, 1},     {VT_UI2, 0xFFFF, 1}, {VT_UI4, 0xFFFFFFFF, 1},
                 {VT_BOOL, 0xFFFF, 0}, {VT_I4, 5, 6},       {VT_UI8, 1ULL << 40, 2ULL << 40}};
  for (const auto& [type, one, other] : numbers) {
    const auto left = MakeProperty();
    const auto right = MakeProperty();
    left->SetVariant(Plain(type, one));
    right->SetVariant(Plain(type, one));
    EXPECT_TRUE(left->MergeWith(right)) << type;
    right->SetVariant(Plain(type, other));
    EXPECT_FALSE(left->MergeWith(right)) << type;
  }
}

TEST(PropertyMerge, LooksAtTheFlagsFirst) {
  const auto own = MakeProperty();
  const auto other = MakeProperty();
  EXPECT_FALSE(own->MergeWith(nullptr));
  other->SetValueUniform(false);
  EXPECT_FALSE(own->MergeWith(other));
  EXPECT_TRUE(own->IsValueUniform());
  other->SetLong(1);
  other->SetFlag20(false);
  EXPECT_FALSE(own->MergeWith(other));
  EXPECT_TRUE(own->IsReadOnly() && own->IsValueUniform());
}

TEST(PropertyCopy, IsNoneBetweenClassesNorFromItself) {
  const auto property = MakeProperty();
  property->SetLong(1);
  const auto yesNo = zdm::NewOf<IZProperty, CZPropertyYesNo>();
  yesNo->SetLong(2);
  for (IZProperty* source : {static_cast<IZProperty*>(nullptr), yesNo.Get(), property.Get()}) {
    property->CopyFrom(source);
    EXPECT_EQ(property->GetLong(), 1);
  }
}

/// A value that cannot be cloned again.
struct CloneOnce : ZDfLong {
  void Clone(ZDfValue** out) override {
    if (std::exchange(wasCloned, true)) throw CAtlException(E_OUTOFMEMORY);
    *out = new CloneOnce(*this);
  }
  void Release() override { delete this; }
  bool wasCloned = false;
};

TEST(PropertyCopy, ClonesTheAttachedValueOrChangesNothing) {
  const auto source = MakeProperty();
  ZDfLong number;
  number.Value = 42;
  source->SetObject(&number);
  EXPECT_NE(source->GetObject(), &number);
  source->SetObject(source->GetObject());
  const auto copy = zdm::CloneAs<IZProperty>(source);
  ASSERT_NE(copy->GetObject(), nullptr);
  EXPECT_NE(copy->GetObject(), source->GetObject());
  EXPECT_TRUE(copy->GetObject()->JudgeSame(&number));

  CloneOnce refusing;
  source->SetObject(&refusing);
  source->SetLong(5);
  EXPECT_EQ(Thrown([&] { copy->CopyFrom(source); }), E_OUTOFMEMORY);
  EXPECT_EQ(copy->GetLong(), -1);
  EXPECT_TRUE(copy->GetObject()->JudgeSame(&number));
  copy->SetObject(nullptr);
  EXPECT_EQ(copy->GetObject(), nullptr);
}

}  // namespace
