// Where points stop being the same; which way placements act, in which order they combine, and when
// there is a way back.
#include "platform/geometry/GeMatrix.h"

#include "tests/platform/geometry/Near.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(XYZ, IsTheSameBelowTheToleranceOnly) {
  EXPECT_FALSE((XYZ{3, 4, 0}.IsSame({}, 5)));
  EXPECT_TRUE((XYZ{3, 4, 0}.IsSame({}, 5.000001)));
  EXPECT_FALSE((XYZ{kNan, 0, 0}.IsSame({kNan, 0, 0})));
  EXPECT_FALSE((XYZ{kInf, 0, 0}.IsSame({kInf, 0, 0})));
}

TEST(XYZ, NormalizesWhatHasADirection) {
  for (const XYZ& with : {XYZ{2, 0, 0}, XYZ{-3e200, 4e200, 1e190}, XYZ{1e-200, 1e-200, 0}}) {
    XYZ unit = with;
    EXPECT_TRUE(unit.Normalize());
    EXPECT_NEAR(unit.GetLength(), 1, 1e-12);
    EXPECT_TRUE(IsNear(unit, with / with.GetLength()));
  }
  for (XYZ without : {XYZ{0, 0, 0}, XYZ{kNan, 1, 0}, XYZ{kInf, 0, 0}, XYZ{1e-310, 0, 0}}) {
    EXPECT_FALSE(without.Normalize());
  }
}

const double kThreeColumns[4][3] = {{0, 1, 0}, {-2, 0, 0}, {0, 0, 3}, {10, 20, 30}};
const double kFourColumns[4][4] = {{0, 1, 0, 0}, {-2, 0, 0, 0}, {0, 0, 3, 0}, {10, 20, 30, 1}};
const double kDoubled[4][4] = {{0, 2, 0, 0}, {-4, 0, 0, 0}, {0, 0, 6, 0}, {20, 40, 60, 2}};

TEST(GeMatrix, TakesAPointWhereItShould) {
  const struct {
    const char* name;
    GeMatrix matrix;
    XYZ image;  // of the point (1, 2, 3)
  } rows[] = {
      {"unit", GeMatrix(), {1, 2, 3}},
      {"translation", GeMatrix::MakeTranslation({10, 20, 30}), {11, 22, 33}},
      {"quarter turn about Z", GeMatrix::MakeRotation({}, {0, 0, 5}, kPi / 2), {-2, 1, 3}},
      {"quarter turn about X", GeMatrix::MakeRotation({}, {1, 0, 0}, kPi / 2), {1, -3, 2}},
      {"turn about a line", GeMatrix::MakeRotation({1, 0, 9}, {0, 0, 1}, kPi / 2), {-1, 0, 3}},
      {"third of a turn", GeMatrix::MakeRotation({}, {1, 1, 1}, 2 * kPi / 3), {3, 1, 2}},
      {"no axis", GeMatrix::MakeRotation({}, {0, 0, 0}, 1), {1, 2, 3}},
      {"scale", GeMatrix::MakeScale({1, 1, 1}, 2), {1, 3, 5}},
      {"uneven scale", GeMatrix::MakeScale({1, 1, 1}, {1, 2, 3}), {1, 3, 7}},
      {"mirror", GeMatrix::MakeMirror({5, 0, 0}, {-2, 0, 0}), {9, 2, 3}},
      {"three columns", GeMatrix(kThreeColumns), {6, 21, 39}},
      {"four columns", GeMatrix(kFourColumns), {6, 21, 39}},
      {"four columns, doubled", GeMatrix(kDoubled), {6, 21, 39}},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(IsNear(row.matrix.TransformPoint({1, 2, 3}), row.image)) << row.name;
  }
}

TEST(GeMatrix, TheDeterminantIsTheRatioOfVolumes) {
  EXPECT_DOUBLE_EQ(GeMatrix(kThreeColumns).GetDeterminant(), 6);
  EXPECT_DOUBLE_EQ(GeMatrix::MakeMirror({5, 0, 0}, {-2, 0, 0}).GetDeterminant(), -1);
}

TEST(GeMatrix, VectorsAreNotTranslated) {
  EXPECT_EQ(GeMatrix(kThreeColumns).TransformVector({1, 2, 3}), (XYZ{-4, 1, 9}));
}

TEST(GeMatrix, IgnoresWhatIsNotAffine) {
  for (int row = 0; row < 4; ++row) {
    for (const double value : {0.0, 1.0, kNan, kInf}) {
      double rows[4][4];
      GeMatrix(kThreeColumns).GetRows(rows);
      rows[row][3] = value;
      double read[4][3];
      GeMatrix(rows).GetRows(read);
      for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 3; ++j) {
          EXPECT_EQ(read[i][j], kThreeColumns[i][j]) << "row " << row << ", " << value;
        }
      }
    }
  }
}

TEST(GeMatrix, TheLeftFactorActsFirst) {
  const GeMatrix move = GeMatrix::MakeTranslation({1, 0, 0});
  const GeMatrix turn = GeMatrix::MakeRotation({}, {0, 0, 1}, kPi / 2);
  const XYZ movedThenTurned = {0, 1, 0};
  const XYZ turnedThenMoved = {1, 0, 0};
  EXPECT_TRUE(IsNear((move * turn).TransformPoint({}), movedThenTurned));
  EXPECT_TRUE(IsNear((turn * move).TransformPoint({}), turnedThenMoved));

  GeMatrix right = move;
  right.MultiRightToSelf(turn);
  EXPECT_TRUE(IsNear(right.TransformPoint({}), movedThenTurned));
  GeMatrix left = move;
  left.MultiLeftToSelf(turn);
  EXPECT_TRUE(IsNear(left.TransformPoint({}), turnedThenMoved));

  GeMatrix self(kThreeColumns);
  self.MultiRightToSelf(self);
  EXPECT_TRUE(self.IsSame(GeMatrix(kThreeColumns) * GeMatrix(kThreeColumns)));
}

TEST(GeMatrix, TheInverseLeadsBack) {
  const struct {
    const char* name;
    GeMatrix matrix;
  } rows[] = {
      {"unit", GeMatrix()},
      {"rows", GeMatrix(kThreeColumns)},
      {"far and turned",
       GeMatrix::MakeRotation({}, {1, -2, 3}, 0.7) * GeMatrix::MakeTranslation({1e7, -2e7, 3e6})},
      {"mirror", GeMatrix::MakeMirror({1, 2, 3}, {1, 1, 0})},
      {"tiny", GeMatrix::MakeScale({}, 1e-150)},
      {"huge", GeMatrix::MakeScale({}, 1e150)},
      {"very uneven", GeMatrix::MakeScale({}, {1e-30, 1, 1e30})},
      {"sheared", GeMatrix::MakeFrame({}, {1, 0, 0}, {1e3, 1, 0}, {5, 1e3, 1})},
  };
  for (const auto& row : rows) {
    GeMatrix inverse;
    ASSERT_TRUE(row.matrix.GetInverse(inverse)) << row.name;
    EXPECT_TRUE((row.matrix * inverse).IsUnit()) << row.name;
    EXPECT_TRUE((inverse * row.matrix).IsUnit()) << row.name;
  }
}

TEST(GeMatrix, SaysWhenThereIsNoInverse) {
  const struct {
    const char* name;
    XYZ x, y, z, origin;
  } rows[] = {
      {"zero", {}, {}, {}, {}},
      {"an axis lost", {1, 0, 0}, {0, 0, 0}, {0, 0, 1}, {}},
      {"coplanar", {1, 0, 0}, {0, 1, 0}, {3, -7, 0}, {}},
      {"almost coplanar", {1, 0, 0}, {0, 1, 0}, {1, 1, 1e-13}, {}},
      {"coplanar and tiny", {1e-9, 0, 0}, {0, 1e-9, 0}, {3e-9, 1e-9, 0}, {}},
      {"not a number", {1, 0, 0}, {0, kNan, 0}, {0, 0, 1}, {}},
      {"infinite", {kInf, 0, 0}, {0, 1, 0}, {0, 0, 1}, {}},
      {"infinitely far", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {kInf, 0, 0}},
      {"out of range", {1e-300, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1e300, 0, 0}},
  };
  for (const auto& row : rows) {
    GeMatrix inverse = GeMatrix::MakeTranslation({7, 7, 7});
    EXPECT_FALSE(GeMatrix::MakeFrame(row.origin, row.x, row.y, row.z).GetInverse(inverse))
        << row.name;
    EXPECT_EQ(inverse.GetTranslation(), (XYZ{7, 7, 7})) << row.name;
  }
}

TEST(GeMatrix, IsUnitWithinItsTolerances) {
  const struct {
    double offset;
    int row;
    bool isUnit;
  } rows[] = {{0.9e-9, 0, true},  {1.1e-9, 1, false}, {-1.1e-9, 2, false}, {0.9e-5, 3, true},
              {1.1e-5, 3, false}, {kNan, 3, false},   {kNan, 0, false},    {-kInf, 3, false}};
  for (const auto& row : rows) {
    for (int column = 0; column < 3; ++column) {
      double entries[4][3];
      GeMatrix().GetRows(entries);
      entries[row.row][column] += row.offset;
      EXPECT_EQ(GeMatrix(entries).IsUnit(), row.isUnit) << row.row << column << " " << row.offset;
    }
  }
}

}  // namespace
