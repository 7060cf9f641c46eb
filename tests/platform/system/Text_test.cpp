// UTF-8 both ways, lower case, comparison without regard to case.
#include "platform/system/Text.h"

#include <gtest/gtest.h>

namespace {

using zdm::EqualIgnoringCase;
using zdm::FromUtf8;
using zdm::ToUtf8;
using zdm::WideString;

WideString Lower(WideString text) {
  const auto length = static_cast<DWORD>(text.size());
  EXPECT_EQ(CharLowerBuffW(text.data(), length), length);
  return text;
}

TEST(Utf8, WellFormedTextGoesBothWays) {
  const struct {
    const OLECHAR* wide;
    const char* bytes;
  } cases[] = {
      {OLESTR(""), ""},
      {OLESTR("A\u007F"), "A\x7F"},
      {OLESTR("\u0080\u07FF"), "\xC2\x80\xDF\xBF"},
      {OLESTR("\u0800\uD7FF\uE000\uFFFF"), "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
      {OLESTR("\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {OLESTR("\u5899 1"), "\xE5\xA2\x99 1"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ToUtf8(each.wide), each.bytes);
    EXPECT_EQ(FromUtf8(each.bytes), each.wide) << each.bytes;
  }
  EXPECT_EQ(FromUtf8(std::string("a\0b", 3)), WideString(OLESTR("a\0b"), 3));
  EXPECT_EQ(ToUtf8(WideString(OLESTR("a\0b"), 3)), std::string("a\0b", 3));
}

TEST(Utf8, IllFormedBytesBecomeReplacementCharacters) {
  const struct {
    const char* what;
    const char* bytes;
    const OLECHAR* wide;
  } cases[] = {
      {"lone trailing byte", "a\x80z", OLESTR("a\uFFFDz")},
      {"overlong slash", "\xC0\xAF", OLESTR("\uFFFD\uFFFD")},
      {"overlong, three bytes", "\xE0\x9F\xBF", OLESTR("\uFFFD\uFFFD\uFFFD")},
      {"surrogate", "\xED\xA0\x80", OLESTR("\uFFFD\uFFFD\uFFFD")},
      {"past the last point", "\xF4\x90\x80\x80", OLESTR("\uFFFD\uFFFD\uFFFD\uFFFD")},
      {"no such lead", "\xF5\xFF", OLESTR("\uFFFD\uFFFD")},
      {"cut short by a letter", "\xE5\xA2z", OLESTR("\uFFFDz")},
      {"cut short by another lead", "\xF0\x90\x80\xC3\xA9", OLESTR("\uFFFD\u00E9")},
      {"cut short by the end", "a\xF0\x90\x80", OLESTR("a\uFFFD")},
  };
  for (const auto& each : cases) EXPECT_EQ(FromUtf8(each.bytes), each.wide) << each.what;
}

TEST(Utf8, SurrogatesWithoutTheirOtherHalfBecomeReplacementCharacters) {
  constexpr OLECHAR kHigh = 0xD83D;
  constexpr OLECHAR kLow = 0xDE00;
  EXPECT_EQ(ToUtf8(WideString{kHigh, kLow}), "\U0001F600");
  EXPECT_EQ(ToUtf8(WideString{kHigh}), "\uFFFD");
  EXPECT_EQ(ToUtf8(WideString{kLow, kHigh}), "\uFFFD\uFFFD");
  EXPECT_EQ(ToUtf8(WideString{kHigh, kHigh, kLow, OLESTR('a')}), "\uFFFD\U0001F600a");
}

TEST(LowerCase, MapsUnitByUnit) {
  EXPECT_EQ(Lower(OLESTR("ANSI31, 3 \u00C9\u0416\u03A9\uFF21\u5899")),
            OLESTR("ansi31, 3 \u00E9\u0436\u03C9\uFF41\u5899"));
  EXPECT_EQ(Lower(WideString(OLESTR("A\0B"), 3)), WideString(OLESTR("a\0b"), 3));
  WideString part = OLESTR("ABC");
  EXPECT_EQ(CharLowerBuffW(part.data(), 2), 2u);
  EXPECT_EQ(part, OLESTR("abC"));
  EXPECT_EQ(CharLowerBuffW(nullptr, 2), 0u);
}

TEST(LowerCase, LeavesLettersWithoutAnUpperCaseOfTheirOwn) {
  const WideString kept = OLESTR("\u0130\u01C5\u03F4\u1E9E\u2126\u212A\u212B");
  EXPECT_EQ(Lower(kept), kept);
}

TEST(EqualIgnoringCase, ComparesLowerCaseCopiesAsNames) {
  EXPECT_TRUE(EqualIgnoringCase(OLESTR("ANSI31"), OLESTR("ansi31")));
  EXPECT_TRUE(EqualIgnoringCase(OLESTR("\u00C9"), OLESTR("e\u0301")));
  EXPECT_FALSE(EqualIgnoringCase(OLESTR("ANSI31"), OLESTR("ansi32")));
  EXPECT_FALSE(EqualIgnoringCase(OLESTR("ANSI31"), OLESTR("ansi3")));
  EXPECT_TRUE(EqualIgnoringCase({}, OLESTR("")));
  EXPECT_FALSE(EqualIgnoringCase({}, OLESTR("a")));
  EXPECT_FALSE(EqualIgnoringCase(WideString(OLESTR("a\0b"), 3), OLESTR("a")));
  EXPECT_TRUE(EqualIgnoringCase(WideString(OLESTR("A\0B"), 3), WideString(OLESTR("a\0b"), 3)));
}

}  // namespace
