// Which hatchings count as the same, and what one writes.
#include "zdm/host/ZGiHatchData.h"

#include "tests/support/Cuts.h"

#include <limits>

namespace {

using namespace zdm::test;

ZGiHatchData Hatch(const OLECHAR* pattern, double first = 50.0, double second = 0.0,
                   double third = 1.0) {
  ZGiHatchData hatch;
  hatch.Pattern = zdm::Bstr(pattern);
  hatch.Values[0] = first;
  hatch.Values[1] = second;
  hatch.Values[2] = third;
  return hatch;
}

TEST(HatchData, ComparesNumbersWithinAToleranceAndPatternsWithoutCase) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  ZGiHatchData withZero = Hatch(nullptr);
  withZero.Pattern = zdm::Bstr(OLESTR("a\0b"), 3);
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
      {"opposite infinities", Hatch(OLESTR("x"), kInfinity), Hatch(OLESTR("x"), -kInfinity), false},
      {"no number on one side", Hatch(OLESTR("x"), kNan), Hatch(OLESTR("x")), false},
      {"no number on both", Hatch(OLESTR("x"), kNan), Hatch(OLESTR("x"), kNan), true},
      {"past a zero", withZero, Hatch(OLESTR("a")), false},
      {"with a zero", withZero, withZero, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.left.JudgeSame(row.right), row.same) << row.what;
    EXPECT_EQ(row.right.JudgeSame(row.left), row.same) << row.what << ", exchanged";
  }
}

// The pattern, 6 bytes with the terminator; 1.0, -2.0, 3.0
const Bytes kRecord =
    Hex("06000000 6100 6200 0000:000000000000F03F:00000000000000C0:0000000000000840");

TEST(HatchDataStream, HoldsPatternThenNumbers) {
  ByteStream stream;
  const ZGiHatchData saved = Hatch(OLESTR("ab"), 1.0, -2.0, 3.0);
  saved.Save(&stream);
  EXPECT_EQ(stream.GetBytes(), kRecord);
  stream.Seek(0, STREAM_SEEK_SET);
  ZGiHatchData hatch = Hatch(OLESTR("old"));
  hatch.Load(&stream);
  EXPECT_TRUE(hatch.JudgeSame(saved));
  EXPECT_EQ(stream.GetBytesLeft(), 0U);
}

TEST(HatchDataStream, ReadsANullPatternAsEmpty) {
  ByteStream stream;
  EXPECT_TRUE(ZGiHatchData().Pattern.IsNull());
  EXPECT_TRUE(ZGiHatchData().JudgeSame(Hatch(nullptr, 50.0, 0.0, 1.0)));
  ZGiHatchData().Save(&stream);
  EXPECT_EQ(stream.GetBytes().size(), 4U + 24U);
  stream.Seek(0, STREAM_SEEK_SET);
  ZGiHatchData hatch = Hatch(OLESTR("old"));
  hatch.Load(&stream);
  EXPECT_FALSE(hatch.Pattern.IsNull());
  EXPECT_TRUE(hatch.Pattern.IsEmpty());
  ByteStream again;
  hatch.Save(&again);
  EXPECT_EQ(again.GetBytes(), stream.GetBytes()) << "unchanged, it keeps its bytes";
}

TEST(HatchDataStream, ThrowsWhereItEndsEarly) {
  ZGiHatchData hatch;
  ExpectShortStreamsThrow(kRecord, [&](IZStream* stream) { hatch.Load(stream); });
}

}  // namespace
