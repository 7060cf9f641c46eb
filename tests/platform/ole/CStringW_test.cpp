// The small string of diagnostics.
#include "platform/ole/CStringW.h"

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"

#include <gtest/gtest.h>

namespace {

template <typename... Values>
std::string Formatted(const OLECHAR* format, const Values&... values) {
  CStringW text;
  text.Format(format, values...);
  return zdm::ToUtf8(text.View());
}

TEST(CStringW, HoldsZerosAndTakesNullAsEmpty) {
  const CStringW text(OLESTR("a\0b"), 3);
  EXPECT_EQ(text.GetLength(), 3);
  EXPECT_EQ(text.GetString()[3], 0);
  EXPECT_TRUE(CStringW(static_cast<const OLECHAR*>(nullptr)).IsEmpty());
  EXPECT_TRUE(CStringW(OLESTR("a"), -1).IsEmpty());
  zdm::Bstr copy;
  copy.Attach(text.AllocSysString());
  EXPECT_EQ(copy, zdm::Bstr(OLESTR("a\0b"), 3));
}

TEST(CStringW, ComparesByUnitsWithAndWithoutCase) {
  const CStringW upper(OLESTR("\u00C9TAGE"));
  const CStringW lower(OLESTR("\u00E9tage"));
  EXPECT_LT(upper.Compare(lower), 0);
  EXPECT_GT(lower.Compare(upper), 0);
  EXPECT_EQ(upper.CompareNoCase(lower), 0);
  EXPECT_LT(upper.CompareNoCase(OLESTR("\u00E9tages")), 0);
  EXPECT_NE(lower.CompareNoCase(OLESTR("etage")), 0);
  EXPECT_NE(upper, lower);
  EXPECT_NE(CStringW(OLESTR("a\0b"), 3), OLESTR("a"));
}

TEST(CStringWFormat, WritesIntegersOfTheirOwnWidth) {
  EXPECT_EQ(Formatted(OLESTR("SelfPID(%d), OwnerPID(%d)\n"), LONG{-5}, LONG{7}),
            "SelfPID(-5), OwnerPID(7)\n");
  EXPECT_EQ(Formatted(OLESTR("%i|%u|%x|%X"), 0, ULONG{4294967295u}, LONG{-1}, 0xABCu),
            "0|4294967295|ffffffff|ABC");
  EXPECT_EQ(Formatted(OLESTR("%d|%u"), LONGLONG{-9223372036854775807LL - 1}, ~ULONGLONG{0}),
            "-9223372036854775808|18446744073709551615");
  EXPECT_EQ(Formatted(OLESTR("%02x%02X|%08x"), BYTE{5}, BYTE{0xAB}, ULONG{0x12345}),
            "05AB|00012345");
}

TEST(CStringWFormat, PadsToTheWidth) {
  EXPECT_EQ(Formatted(OLESTR("[%4d][%-4d][%04d][%-04d]"), -7, -7, -7, -7),
            "[  -7][-7  ][-007][-7  ]");
  EXPECT_EQ(Formatted(OLESTR("[%4s][%-4s][%2s][%04s]"), OLESTR("ab"), OLESTR("ab"), OLESTR("abc"),
                      OLESTR("ab")),
            "[  ab][ab  ][abc][  ab]");
  EXPECT_EQ(Formatted(OLESTR("%99999999999999999999d"), 1).size(), 255u);
}

TEST(CStringWFormat, WritesText) {
  EXPECT_EQ(Formatted(OLESTR("\u7B2C%d\u4E2A:\t%s%c"), 3, CStringW(OLESTR("\u5899")), OLESTR('!')),
            "\u7B2C3\u4E2A:\t\u5899!");
  EXPECT_EQ(Formatted(OLESTR("%s 100%%"), static_cast<const OLECHAR*>(nullptr)), "(null) 100%");
}

TEST(CStringWFormat, LeavesWhatDoesNotFitItsValue) {
  EXPECT_EQ(Formatted(OLESTR("%s|%d|%q|%d|%5"), 1, OLESTR("x"), 2, 3), "%s|%d|%q|3|%5");
  EXPECT_EQ(Formatted(OLESTR("%d %d"), 1), "1 %d");
  EXPECT_EQ(Formatted(OLESTR("%")), "%");
  EXPECT_EQ(Formatted(nullptr), "");
}

TEST(CStringWFormat, MayUseItsOwnText) {
  CStringW text(OLESTR("%s and %s"));
  text.Format(text, text, text.GetString());
  text += text;
  text += static_cast<const OLECHAR*>(nullptr);
  EXPECT_EQ(text, OLESTR("%s and %s and %s and %s%s and %s and %s and %s"));
}

}  // namespace
