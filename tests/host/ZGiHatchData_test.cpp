// Which hatchings count as the same, and what one writes.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "zdm/host/ZGiHatchData.h"

namespace {

ZGiHatchData Hatch(const OLECHAR* pattern, double first = 50.0, double second = 0.0,
                   double third = 1.0) {
  ZGiHatchData hatch;
  hatch.Pattern = zdm::Bstr(pattern);
  hatch.Values[0] = first;
  hatch.Values[1] = second;
  hatch.Values[2] = third;
  return hatch;
}

TEST(HatchData, StartsWithoutPattern) {
  EXPECT_TRUE(ZGiHatchData().Pattern.IsNull());
  EXPECT_TRUE(ZGiHatchData().JudgeSame(Hatch(OLESTR(""), 50.0, 0.0, 1.0)));
}

TEST(HatchData, ComparesNumbersWithinAToleranceAndPatternsWithoutCase) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    const char* what;
    ZGiHatchData left, right;
    bool same;
  } rows[] = {
      {"case of a pattern", Hatch(OLESTR("Brick")), Hatch(OLESTR("bRICK")), true},
      {"case beyond ASCII", Hatch(OLESTR("\u00c4\u0416")), Hatch(OLESTR("\u00e4\u0436")), true},
      {"pattern", Hatch(OLESTR("Brick")), Hatch(OLESTR("Brick2")), false},
      {"null and empty pattern", Hatch(nullptr), Hatch(OLESTR("")), true},
      {"null and named pattern", Hatch(nullptr), Hatch(OLESTR("Brick")), false},
      {"first by 1e-6", Hatch(OLESTR("x"), 50.000001), Hatch(OLESTR("x")), true},
      {"first by 2e-5", Hatch(OLESTR("x"), 50.00002), Hatch(OLESTR("x")), false},
      {"second by 1e-5", Hatch(OLESTR("x"), 50, 1e-5), Hatch(OLESTR("x")), true},
      {"second by -2e-5", Hatch(OLESTR("x"), 50, -2e-5), Hatch(OLESTR("x")), false},
      {"third by 2e-5", Hatch(OLESTR("x"), 50, 0, 1.00002), Hatch(OLESTR("x")), false},
      {"infinite", Hatch(OLESTR("x"), kInfinity), Hatch(OLESTR("x"), kInfinity), true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.left.JudgeSame(row.right), row.same) << row.what;
    EXPECT_EQ(row.right.JudgeSame(row.left), row.same) << row.what << ", exchanged";
  }
}

}  // namespace
