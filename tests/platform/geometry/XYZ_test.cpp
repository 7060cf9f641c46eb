// Where points stop being the same, and vectors stop having a direction.
#include "platform/geometry/XYZ.h"

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

}  // namespace
