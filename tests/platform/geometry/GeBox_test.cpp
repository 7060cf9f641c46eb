// What boxes unite to, and where their six values stand.
#include "platform/geometry/GeBox.h"

#include "platform/geometry/GeMatrix.h"
#include "tests/platform/geometry/Near.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

using Six = std::array<double, 6>;

constexpr Six kEmpty = {1e20, 1e20, 1e20, -1e20, -1e20, -1e20};
constexpr Six kRelation = {1e20, 1e20, 1e20, 1e20, 1e20, 1e20};  // what a plain relation answers
constexpr Six kSmall = {1, 2, 3, 4, 5, 6};

GeBox Box(const Six& v) { return {{v[0], v[1], v[2]}, {v[3], v[4], v[5]}}; }

Six ValuesOf(const GeBox& box) {
  Six values;
  box.GetBox(values.data());
  return values;
}

TEST(GeBox, UnionIsPlainMinimumAndMaximum) {
  const struct {
    const char* name;
    Six first, second, result;
  } rows[] = {
      {"empty and empty", kEmpty, kEmpty, kEmpty},
      {"empty first", kEmpty, kSmall, kSmall},
      {"empty second", kSmall, kEmpty, kSmall},
      {"a relation's box counts", kSmall, kRelation, {1, 2, 3, 1e20, 1e20, 1e20}},
      {"each side by itself", kSmall, {0, 3, -1, 9, 4, 7}, {0, 2, -1, 9, 5, 7}},
      {"inverted", kSmall, {4, 5, 6, 1, 2, 3}, kSmall},
      {"not a number", kSmall, {kNan, 0, kNan, kNan, 9, kNan}, {1, 0, 3, 4, 9, 6}},
  };
  for (const auto& row : rows) {
    GeBox byBox = Box(row.first);
    byBox.UnionBoxToSelf(Box(row.second));
    EXPECT_EQ(ValuesOf(byBox), row.result) << row.name;
    GeBox byArray = Box(row.first);
    byArray.UnionBoxToSelf(row.second.data());
    EXPECT_EQ(ValuesOf(byArray), row.result) << row.name;
    const Six& s = row.second;
    GeBox byValues = Box(row.first);
    byValues.UnionBoxToSelf(s[0], s[1], s[2], s[3], s[4], s[5]);
    EXPECT_EQ(ValuesOf(byValues), row.result) << row.name;
  }
}

TEST(GeBox, StartsEmpty) {
  EXPECT_EQ(ValuesOf(GeBox()), kEmpty);
  EXPECT_TRUE(GeBox().IsEmpty());
  EXPECT_TRUE(Box({0, 0, kNan, 1, 1, 1}).IsEmpty());
  EXPECT_FALSE(Box({1, 1, 1, 1, 1, 1}).IsEmpty());
  EXPECT_EQ(GeBox().GetSize(), XYZ());
}

TEST(GeBox, MeetsWhatItTouches) {
  const GeBox box = Box(kSmall);
  const struct {
    Six other;
    bool meets;
  } rows[] = {{{2, 3, 4, 3, 4, 5}, true},
              {{0, 0, 0, 9, 9, 9}, true},
              {{4 + 0.9e-5, 2, 3, 9, 5, 6}, true},
              {{4 + 1.1e-5, 2, 3, 9, 5, 6}, false},
              {{1, -9, 3, 4, 2 - 1.1e-5, 6}, false},
              {{1, 2, 7, 4, 5, 8}, false},
              {kEmpty, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(box.Intersects(Box(row.other)), row.meets) << row.other[0];
    EXPECT_EQ(Box(row.other).Intersects(box), row.meets) << row.other[0];
  }
  EXPECT_TRUE(box.Contains({1, 5, 4.5}));
  EXPECT_FALSE(box.Contains({1, 5, 6.1}));
  EXPECT_FALSE(box.Contains({kNan, 3, 4}));
}

TEST(GeBox, EnclosesItsImage) {
  GeBox box = Box({0, 0, 0, 2, 2, 1});
  box.TransformBy(GeMatrix::MakeRotation({1, 1, 0}, {0, 0, 1}, kPi / 4));
  const double r = std::sqrt(2.0);
  EXPECT_TRUE(IsNear(box.GetMinPos(), {1 - r, 1 - r, 0}));
  EXPECT_TRUE(IsNear(box.GetMaxPos(), {1 + r, 1 + r, 1}));
  GeBox empty;
  empty.TransformBy(GeMatrix::MakeMirror({}, {1, 1, 1}));
  EXPECT_EQ(ValuesOf(empty), kEmpty);
}

}  // namespace
