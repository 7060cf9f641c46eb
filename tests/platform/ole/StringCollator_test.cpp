// The portable collator's short ways, in languages whose rules are special there.
#include "platform/ole/portable/StringCollator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using zdm::StringCollator;
using Text = std::u16string;

int Sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

Text MakeText(std::mt19937& random) {
  // Letters of sequences and accents, marks, an index mark, Chinese with two sequences of pinyin.
  constexpr std::u16string_view kUnits =
      u"aAcChHlLnyYzZvVwWsSd' "
      u"-01\u00E9\u0301\u00B7\uFDD0\u4E00\u5899\u91CD\u5E86\u6C88\u9633\u3099";
  Text text;
  for (auto left = random() % 6; left > 0; --left) text += kUnits[random() % kUnits.size()];
  return text;
}

// Different control characters in front are ignored, but keep a comparison off every short way.
TEST(StringCollator, ShortWaysGiveTheOrderOfTheLongOneInEveryLanguage) {
  for (const char* locale : {
           "en",
           "en_US_POSIX",  // capitals before small letters
           "en@colNumeric=yes",
           "fr_CA",
           "de@collation=phonebook",
           "tr",
           "cs",                        // ch is a letter
           "es@collation=traditional",  // ll too
           "hu",                        // ccs expands
           "da",                        // aa is a with ring; capitals first
           "fi@collation=traditional",  // v and w differ as accents do
           "th",                        // punctuation ignored by default
           "ja",
           "zh",  // words of several characters
           "zh@collation=stroke",
       }) {
    const StringCollator collator(locale);
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
      const Text common = MakeText(random);
      const Text left = common + MakeText(random);
      const Text right = (round % 4 == 0 ? Text() : common) + MakeText(random);
      EXPECT_EQ(Sign(collator.Compare(left, right)),
                Sign(collator.Compare(u"\1" + left, u"\2" + right)))
          << locale << ' ' << testing::PrintToString(left) << testing::PrintToString(right);
    }
    EXPECT_NE(collator.Compare(u"a-b", u"ab"), 0) << locale;
    EXPECT_NE(collator.Compare(u"01", u"1"), 0) << locale;
    EXPECT_EQ(collator.CompareIgnoringCase(u"Wall \u00C9", u"wALL e\u0301"), 0) << locale;
  }
}

TEST(StringCollator, MarkAfterTheFirstDifferenceBelongsToIt) {
  EXPECT_GT(StringCollator("sv").Compare(u"a\u030A", u"b"), 0);  // a letter after z
  EXPECT_LT(StringCollator("en").Compare(u"a\u030A", u"b"), 0);
}

// Where v and w differ as accents do, they outweigh a difference of case that stands before them.
TEST(StringCollator, LettersThatDifferAsAccentsAreNotTakenForCase) {
  EXPECT_LT(StringCollator("fi@collation=traditional").Compare(u"Av", u"aw"), 0);
  EXPECT_GT(StringCollator("en").Compare(u"aw", u"Av"), 0);
}

}  // namespace
