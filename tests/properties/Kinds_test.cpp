// What each kind of property adds to the plain one.
#include "platform/geometry/XYZ.h"
#include "platform/ole/Variant.h"
#include "tests/properties/PropertySupport.h"
#include "zdm/properties/CZPropertyPair.h"
#include "zdm/properties/IZPropKeyArray.h"
#include "zdm/properties/IZPropertyArray.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/properties/IZPropertyPoint.h"
#include "zdm/properties/IZPropertyScaleIndex.h"
#include "zdm/properties/IZPropertyText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

using namespace zdm::test;

ZRefPtr<IZPropertyScaleIndex> MakeScales() {
  return zdm::NewOf<IZPropertyScaleIndex, CZPropertyScaleIndex>();
}

/// Labels in order, each followed by a blank; "-" for null.
std::string LabelsOf(IZPropertyScaleIndex& scales) {
  std::string labels;
  double ratio = 0;
  bool more = true;
  labels += TextOf([&](BSTR* out) { scales.GetFirstScale(&ratio, out); }) + " ";
  while (more) {
    const std::string label = TextOf([&](BSTR* out) { more = scales.GetNextScale(&ratio, out); });
    if (more) labels += label + " ";
  }
  return labels;
}

TEST(ScaleProperty, AddsTheStandardScalesInOrder) {
  const auto scales = MakeScales();
  scales->AddStandardScales();
  EXPECT_EQ(scales->GetScaleCount(), 38u);
  EXPECT_EQ(LabelsOf(*scales),
            "1:1 1:1.5 1:2 2:1 1:2.5 2.5:1 1:3 1:4 4:1 1:5 5:1 1:6 1:10 10:1 1:15 1:20 1:30 1:40 "
            "1:50 1:60 1:100 1:150 1:200 1:300 1:400 1:500 1:600 1:1000 20:1 25:1 40:1 50:1 100:1 "
            "200:1 250:1 400:1 500:1 1000:1 ");
}

TEST(ScaleProperty, LabelsARatioByTheFirstRowWithinTheTolerance) {
  const auto scales = MakeScales();
  const double ratios[] = {0.01, 0.0123, 1.0 / 3, 0.0005, 0.0002, 5000, 2000, 1.00005, 1.0002,
                           // Between 1:500 (0.002) and 1:600: the earlier row counts.
                           0.00191, 0.00175, std::numeric_limits<double>::quiet_NaN()};
  scales->AddScales(ratios, static_cast<LONG>(std::size(ratios)));
  scales->AddScales(ratios, -1);
  EXPECT_EQ(LabelsOf(*scales), "1:100 - 1:3 1:2000 1:5000 5000:1 2000:1 1:1 - 1:500 1:600 - ");
}

TEST(ScaleProperty, FindsLabelsAmongItsEntriesAndCountsEveryAdd) {
  const auto scales = MakeScales();
  const auto textOf = [&](double ratio) {
    return TextOf([&](BSTR* out) { scales->GetScaleText(ratio, out); });
  };
  scales->AddScale(0.5, OLESTR("half"));
  scales->AddStandardScale(0.5);
  EXPECT_EQ(textOf(0.5000001), "half");
  EXPECT_EQ(textOf(0.5002), "-");
  scales->RemoveAllScales();
  EXPECT_EQ(textOf(0.5), "-");
  EXPECT_EQ(scales->GetScaleCount(), 2u);
  EXPECT_EQ(zdm::CloneAs<IZPropertyScaleIndex>(scales)->GetScaleCount(), 0u);
}

TEST(ScaleProperty, CopyAppendsEntries) {
  const auto scales = MakeScales();
  scales->AddStandardScale(0.5);
  scales->AddStandardScale(2);
  const auto copy = MakeScales();
  copy->AddScale(3, OLESTR("three"));
  copy->CopyFrom(scales);
  copy->CopyFrom(copy);
  EXPECT_EQ(LabelsOf(*copy), "three 1:2 2:1 ");
  EXPECT_EQ(copy->GetScaleCount(), 3u);
}

TEST(ScaleProperty, TheCursorNeedsAFirstEntry) {
  const auto scales = MakeScales();
  double ratio = 0;
  zdm::Bstr label;
  EXPECT_EQ(Thrown([&] { scales->GetFirstScale(&ratio, label.Out()); }), E_FAIL);
  scales->AddScale(1, nullptr);
  EXPECT_FALSE(scales->GetNextScale(&ratio, label.Out()));
}

TEST(IndexProperty, KeepsSixteenBits) {
  const auto index = zdm::NewOf<IZPropertyIndex, CZPropertyIndex>();
  EXPECT_EQ(index->GetType(), 25u);
  EXPECT_EQ(index->GetExtra3(), 0xFFFFFFFFu);
  index->SetLong(3);
  EXPECT_TRUE(index->GetLong() == 3 && index->GetShort() == 3 && index->GetExtra3() == 3);
  index->SetExtra3(0x1FFFE);
  EXPECT_TRUE(index->GetLong() == 0xFFFE && index->GetShort() == -2);
  index->SetDouble(3);
  EXPECT_EQ(index->GetLong(), -1);
}

TEST(IndexProperty, FindsTheFirstEntryOfANumber) {
  const auto index = zdm::NewOf<IZPropertyIndex, CZPropertyIndex>();
  index->AddEntry(7, OLESTR("seven"));
  index->AddEntry(8, nullptr);
  index->AddEntry(7, OLESTR("again"));
  bool found = false;
  const auto textOf = [&](ULONG number) {
    return TextOf([&](BSTR* out) { found = index->GetEntryText(number, out); });
  };
  EXPECT_EQ(textOf(7), "seven");
  EXPECT_TRUE(textOf(8) == "-" && found);
  EXPECT_TRUE(textOf(9) == "-" && !found);
  ULONG number = 0;
  zdm::Bstr label;
  const auto copy = zdm::CloneAs<IZPropertyIndex>(index);
  copy->GetFirstEntry(&number, label.Out());
  EXPECT_TRUE(copy->GetNextEntry(&number, label.Out()));
  EXPECT_EQ(number, 8u);
}

ZRefPtr<IZPropertyPoint> MakePoint(const XYZ& point) {
  auto property = zdm::NewOf<IZPropertyPoint, CZPropertyPoint>();
  property->SetPoint(point);
  return property;
}

XYZ PointOf(IZPropertyPoint* property) {
  XYZ point;
  EXPECT_TRUE(property->GetPoint(&point));
  return point;
}

std::string Uniform(IZPropertyPoint* point) {
  return std::string(point->IsUniformX() ? "x" : "") + (point->IsUniformY() ? "y" : "") +
         (point->IsUniformZ() ? "z" : "");
}

TEST(PointProperty, MergesByCoordinate) {
  const struct {
    XYZ left, right;
    const char* otherUniform;
    const char* uniform;
  } rows[] = {
      {{1, 2, 3}, {1, 2, 3}, "xyz", "xyz"}, {{1, 2, 3}, {1, 5, 3}, "xyz", "xz"},
      {{1, 2, 3}, {1, 2, 3}, "yz", "yz"},   {{0, 0, 0}, {1e-5, 0, 2e-5}, "xyz", "xy"},
      {{1, 2, 3}, {4, 5, 6}, "xyz", ""},
  };
  for (const auto& row : rows) {
    const auto left = MakePoint(row.left);
    const auto right = MakePoint(row.right);
    right->SetUniformX(std::string(row.otherUniform).find('x') != std::string::npos);
    EXPECT_EQ(left->MergeWith(right), *row.uniform != 0);
    EXPECT_EQ(Uniform(left), row.uniform);
    EXPECT_EQ(PointOf(left), row.left);
    EXPECT_EQ(left->MergeWith(right), *row.uniform != 0);  // what is gone stays gone
    EXPECT_EQ(Uniform(zdm::CloneAs<IZPropertyPoint>(left)), row.uniform);
    left->ResetValue();
    EXPECT_EQ(Uniform(left), "xyz");
  }
}

TEST(PointProperty, MergesWithAnotherThatIsNoPointAsAnyPropertyDoes) {
  const auto point = MakePoint({1, 2, 3});
  EXPECT_FALSE(point->MergeWith(nullptr));
  const auto none = zdm::NewOf<IZPropertyPoint, CZPropertyPoint>();
  none->SetFlag20(false);
  EXPECT_FALSE(point->MergeWith(none));
  EXPECT_TRUE(point->IsReadOnly());
  EXPECT_EQ(Uniform(point), "xyz");
  none->SetFlag20(true);
  EXPECT_FALSE(point->MergeWith(none));
  EXPECT_EQ(Uniform(point), "");
  EXPECT_TRUE(point->IsValueUniform());
  EXPECT_FALSE(point->MergeWith(MakeProperty()));
  EXPECT_FALSE(point->IsValueUniform());
}

TEST(PointProperty, TakesItsBlockOfCoordinates) {
  const double blocks[] = {-1, 1, 2, 3, -2, 4, 5, 6};
  const auto point = MakePoint({7, 8, 9});
  EXPECT_EQ(point->GetType(), 18u);
  EXPECT_EQ(point->GetExtra3(), 0xFFFFFFFFu);
  const struct {
    LONG number;
    XYZ expected;
  } rows[] = {{-1, {7, 8, 9}}, {0, {7, 8, 9}}, {2, {4, 5, 6}}, {1, {1, 2, 3}}};
  for (const auto& row : rows) {
    point->SetExtra3(static_cast<ULONG>(row.number));
    point->SetPointFromArray(blocks);
    point->CombinePoint({0, 0, 0});
    EXPECT_EQ(PointOf(point), row.expected) << row.number;
  }
  const auto copy = zdm::CloneAs<IZPropertyPoint>(point);
  EXPECT_EQ(PointOf(copy), (XYZ{1, 2, 3}));
  EXPECT_EQ(copy->GetExtra3(), 0xFFFFFFFFu);
}

TEST(PointProperty, IsNoPointWithoutThreeDoubles) {
  const auto point = MakePoint({7, 8, 9});
  const struct {
    VARTYPE type;
    LONG first;
    ULONG count;
    bool isPoint;
  } rows[] = {
      {VT_R8, 0, 2, false}, {VT_R8, 0, 4, false}, {VT_R4, 0, 3, false}, {VT_R8, -1, 3, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.type) + " from " + std::to_string(row.first));
    VARIANT value;
    VariantInit(&value);
    value.vt = static_cast<VARTYPE>(VT_ARRAY | row.type);
    value.parray = SafeArrayCreateVector(row.type, row.first, row.count);
    point->SetVariant(value);
    VariantClear(&value);
    XYZ out = {1, 1, 1};
    EXPECT_EQ(point->GetPoint(&out), row.isPoint);
    EXPECT_EQ(out, XYZ{});
  }
}

TEST(PropertyArray, GivesItsPointsTheirCoordinates) {
  const auto array = zdm::NewOf<IZPropertyArray, CZPropertyArray>();
  EXPECT_EQ(array->GetType(), 23u);
  EXPECT_EQ(array->GetPointCount(), 0xFFFFFFFFu);
  array->AddPoints(-1, OLESTR("none"), nullptr, Key(1));
  array->AddPoints(3, OLESTR("vertex"), OLESTR("Vertex"), Key(1));
  const double blocks[] = {-1, 1, 2, 3, -1, 4, 5, 6, -1, 7, 8, 9};
  EXPECT_EQ(array->SetPoints(blocks, 2), 3u);
  EXPECT_EQ(array->GetPointCount(), 0xFFFFFFFFu);
  EXPECT_EQ(array->SetPoints(blocks, 3), 0u);
  EXPECT_EQ(array->GetPointCount(), 3u);
  const auto copy = zdm::CloneAs<IZPropertyArray>(array);
  const auto members = Members(copy.Get());
  ASSERT_EQ(members.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(members[i]->GetExtra2(), i);
    EXPECT_EQ(NameOf(members[i]) + DisplayNameOf(members[i]), "vertexVertex");
    EXPECT_TRUE(members[i]->HasGUID(Key(1)));
    EXPECT_EQ(PointOf(zdm::ViewAs<IZPropertyPoint>(members[i])),
              XYZ::FromArray(blocks + 4 * i + 1));
  }
  array->AddHead(MakeProperty());
  EXPECT_EQ(array->SetPoints(blocks, 3), 4u);
  array->SetPointCount(40000);
  EXPECT_EQ(array->GetPointCount(), 40000u);
  EXPECT_FALSE(array->MergeWith(nullptr));
  EXPECT_TRUE(array->IsReadOnly());
}

TEST(PairProperty, ACopyTakesExtraThree) {
  const auto pair = zdm::Attached(new CZPropertyPair);
  pair->SetPairValue(5);
  pair->SetExtra3(9);
  const auto copy = zdm::Attached(new CZPropertyPair);
  copy->CopyFrom(pair);
  ULONG value = 0;
  EXPECT_EQ(copy->GetPairValue(&value), 0);
  EXPECT_EQ(value, 9u);
}

TEST(TextProperty, SharesOneZeroBlock) {
  const auto text = zdm::NewOf<IZPropertyText, CZPropertyText>();
  const auto* buffer = static_cast<const BYTE*>(text->GetSharedBuffer());
  EXPECT_TRUE(std::all_of(buffer, buffer + 1024, [](BYTE byte) { return byte == 0; }));
  EXPECT_EQ((zdm::NewOf<IZPropertyText, CZPropertyText>()->GetSharedBuffer()), buffer);
}

TEST(PropKeyArray, KeepsEachKeyOnce) {
  const auto keys = zdm::NewOf<IZPropKeyArray, CZPropKeyArray>();
  EXPECT_TRUE(keys->IsEmpty());
  const GUID* first = keys->AddKey(Key(1));
  const GUID* second = keys->AddKey(Key(2));
  EXPECT_NE(first, second);
  EXPECT_EQ(keys->AddKey(Key(1)), first);
  EXPECT_EQ(*keys->GetKeys(), (std::list<GUID>{Key(1), Key(2)}));
}

}  // namespace
