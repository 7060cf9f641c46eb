// The portable collator's short way for ASCII, in languages whose rules are special there.
#include "platform/ole/portable/StringCollator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using zdm::StringCollator;
using Text = std::u16string;

int Sign(int value) {
  return value < 0 ? -1 : value > 0 ? 1 : 0;
}

Text MakeText(std::mt19937& random) {
  constexpr std::u16string_view kUnits = u"aAcChHlLnyYzZvVwWsSd' -01\u00E9\u0301\u00B7";
  Text text;
  for (auto left = random() % 6; left > 0; --left) text += kUnits[random() % kUnits.size()];
  return text;
}

// A control character is ignored, and keeps the comparison off the short way.
TEST(StringCollator, ShortWayGivesTheOrderOfTheLongOneInEveryLanguage) {
  for (const char* locale : {"en_US_POSIX",  // capitals before small letters
                             "en", "zh", "de@collation=phonebook", "tr",
                             "cs",                        // ch is a letter
                             "es@collation=traditional",  // ll too
                             "da",                        // aa is a with ring; capitals first
                             "hu",                        // ccs expands
                             "sv@collation=reformed", "fi@collation=traditional",  // v and w
                             "th",  // punctuation ignored by default
                             "en@colNumeric=yes", "fr_CA"}) {
    const StringCollator collator(locale);
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
      const Text left = MakeText(random);
      const Text right = MakeText(random);
      EXPECT_EQ(Sign(collator.Compare(left, right)),
                Sign(collator.Compare(u"\1" + left, u"\1" + right)))
          << locale << ' ' << testing::PrintToString(left) << testing::PrintToString(right);
    }
    EXPECT_NE(collator.Compare(u"a-b", u"ab"), 0) << locale;
    EXPECT_NE(collator.Compare(u"01", u"1"), 0) << locale;
  }
}

}  // namespace
