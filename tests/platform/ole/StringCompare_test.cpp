// Which names count as equal. On Windows the system answers, elsewhere the portable comparison.
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"

#include <gtest/gtest.h>

namespace {

using zdm::Bstr;
using zdm::WideView;

constexpr OLECHAR kZeroInside[] = OLESTR("Wall\0one");
constexpr OLECHAR kOtherZeroInside[] = OLESTR("Wall\0two");

bool Equal(WideView left, WideView right, ULONG flags = 0, LCID locale = LOCALE_USER_DEFAULT) {
  const Bstr leftString(left);
  const Bstr rightString(right);
  const HRESULT forth = VarBstrCmp(leftString.Get(), rightString.Get(), locale, flags);
  const HRESULT back = VarBstrCmp(rightString.Get(), leftString.Get(), locale, flags);
  EXPECT_GE(forth, 0);
  EXPECT_LE(forth, 2);
  EXPECT_EQ(forth + back, 2);  // the other way round: the other answer
  return forth == static_cast<HRESULT>(VARCMP_EQ);
}

TEST(StringCompare, NullAndEmptyAreEqualAndComeFirst) {
  const Bstr empty(OLESTR(""));
  const Bstr name(OLESTR("a"));
  for (BSTR none : {BSTR{nullptr}, empty.Get()}) {
    EXPECT_EQ(VarBstrCmp(none, nullptr, LOCALE_USER_DEFAULT, 0), static_cast<HRESULT>(VARCMP_EQ));
    EXPECT_EQ(VarBstrCmp(none, empty.Get(), LOCALE_USER_DEFAULT, 0),
              static_cast<HRESULT>(VARCMP_EQ));
    EXPECT_EQ(VarBstrCmp(none, name.Get(), LOCALE_USER_DEFAULT, 0),
              static_cast<HRESULT>(VARCMP_LT));
    EXPECT_EQ(VarBstrCmp(name.Get(), none, LOCALE_USER_DEFAULT, 0),
              static_cast<HRESULT>(VARCMP_GT));
  }
}

struct Pair {
  const char* what;
  WideView left;
  WideView right;
};

TEST(StringCompare, EqualNames) {
  for (const Pair& pair : {
           Pair{"same ASCII", OLESTR("Wall 1"), OLESTR("Wall 1")},
           Pair{"same with a zero", {kZeroInside, 8}, {kZeroInside, 8}},
           Pair{"same unpaired surrogate", WideView(OLESTR("a\xD800"), 2),
                WideView(OLESTR("a\xD800"), 2)},
           Pair{"e acute", OLESTR("\u00E9"), OLESTR("e\u0301")},
           Pair{"e acute inside", OLESTR("pr\u00E9fab 2"), OLESTR("pre\u0301fab 2")},
           Pair{"n tilde last", OLESTR("man\u0303"), OLESTR("ma\u00F1")},
           Pair{"two marks", OLESTR("\u01D5"), OLESTR("U\u0308\u0304")},
           Pair{"two marks, one composed", OLESTR("\u01D5"), OLESTR("\u00DC\u0304")},
           Pair{"angstrom sign", OLESTR("\u212B"), OLESTR("\u00C5")},
           Pair{"compatibility ideograph", OLESTR("\uF900"), OLESTR("\u8C48")},
           Pair{"soft hyphen", OLESTR("a\u00AD"), OLESTR("a")},
       }) {
    EXPECT_TRUE(Equal(pair.left, pair.right)) << pair.what;
  }
}

TEST(StringCompare, DifferentNames) {
  for (const Pair& pair : {
           Pair{"case", OLESTR("wall"), OLESTR("Wall")},
           Pair{"case past an accent", OLESTR("\u00E9tage a"), OLESTR("\u00E9tage A")},
           Pair{"prefix", OLESTR("Wall 1"), OLESTR("Wall 17")},
           Pair{"space at the end", OLESTR("a "), OLESTR("a")},
           Pair{"hyphen", OLESTR("co-op"), OLESTR("coop")},
           Pair{"apostrophe", OLESTR("can't"), OLESTR("cant")},
           Pair{"accent", OLESTR("\u00E9"), OLESTR("e")},
           Pair{"accent after the common part", OLESTR("Wall e\u0301"), OLESTR("Wall e")},
           Pair{"accent, decomposed, against more letters", OLESTR("e\u0301"), OLESTR("ef")},
           Pair{"other accent", OLESTR("\u00E9"), OLESTR("e\u0300")},
           Pair{"past a zero", {kZeroInside, 8}, {kOtherZeroInside, 8}},
           Pair{"full width", OLESTR("\uFF21"), OLESTR("A")},
           Pair{"kana", OLESTR("\u3042"), OLESTR("\u30A2")},
           Pair{"dotless i", OLESTR("\u0131"), OLESTR("i")},
           Pair{"superscript", OLESTR("m\u00B2"), OLESTR("m2")},
           Pair{"no-break space", OLESTR("a\u00A0b"), OLESTR("a b")},
           Pair{"beyond the first plane", OLESTR("\U0001F600"), OLESTR("\U0001F601")},
       }) {
    EXPECT_FALSE(Equal(pair.left, pair.right)) << pair.what;
  }
}

TEST(StringCompare, IgnoringCaseStillTellsAccentsAndWidthApart) {
  EXPECT_TRUE(Equal(OLESTR("Wall 1"), OLESTR("wALL 1"), NORM_IGNORECASE));
  EXPECT_TRUE(Equal(OLESTR("\u00C9tage"), OLESTR("e\u0301TAGE"), NORM_IGNORECASE));
  EXPECT_TRUE(Equal(OLESTR("\u03C2"), OLESTR("\u03A3"), NORM_IGNORECASE));
  EXPECT_FALSE(Equal(OLESTR("Wall 1"), OLESTR("wall 2"), NORM_IGNORECASE));
  EXPECT_FALSE(Equal(OLESTR("\u00C9tage"), OLESTR("etage"), NORM_IGNORECASE));
  EXPECT_FALSE(Equal(OLESTR("\uFF21"), OLESTR("a"), NORM_IGNORECASE));
}

TEST(StringCompare, LocaleZeroComparesUnits) {
  EXPECT_FALSE(Equal(OLESTR("\u00E9"), OLESTR("e\u0301"), 0, 0));
  EXPECT_TRUE(Equal(OLESTR("\u00E9"), OLESTR("\u00E9"), 0, 0));
}

}  // namespace
