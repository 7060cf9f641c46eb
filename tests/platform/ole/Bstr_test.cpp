// BSTR storage and the owning wrapper.
#include "platform/ole/Bstr.h"

#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using zdm::Bstr;
using zdm::SameName;
using zdm::SameUnits;
using zdm::test::Thrown;
using Text = std::basic_string<OLECHAR>;
using View = std::basic_string_view<OLECHAR>;

constexpr OLECHAR kZeroInside[] = OLESTR("a\0b");

TEST(BstrStorage, LengthInBytesStandsBeforeTheTextAndAZeroUnitAfterIt) {
  const Bstr string(kZeroInside, 3);
  UINT stored;
  std::memcpy(&stored, reinterpret_cast<const BYTE*>(string.Get()) - 4, sizeof(stored));
  EXPECT_EQ(stored, 6u);
  EXPECT_EQ(SysStringByteLen(string.Get()), 6u);
  EXPECT_EQ(SysStringLen(string.Get()), 3u);
  EXPECT_EQ(Text(string.Get(), 3), Text(kZeroInside, 3));
  EXPECT_EQ(string.Get()[3], 0);
}

TEST(BstrStorage, OddByteLengthKeepsEveryByteAndCountsWholeUnits) {
  Bstr string;
  string.Attach(SysAllocStringByteLen("abc", 3));
  EXPECT_EQ(SysStringByteLen(string.Get()), 3u);
  EXPECT_EQ(SysStringLen(string.Get()), 1u);
  const Bstr copy = Bstr::CopyOf(string.Get());
  EXPECT_EQ(SysStringByteLen(copy.Get()), 3u);
  EXPECT_EQ(std::memcmp(copy.Get(), "abc", 3), 0);
}

TEST(BstrRealloc, TakesTextInsideTheStringItReplacesOrKeepsTheUnits) {
  BSTR string = SysAllocString(OLESTR("hello"));
  EXPECT_TRUE(SysReAllocStringLen(&string, string + 1, 3));
  EXPECT_EQ(Text(string), OLESTR("ell"));
  EXPECT_TRUE(SysReAllocStringLen(&string, nullptr, 8));
  EXPECT_EQ(SysStringLen(string), 8u);
  EXPECT_EQ(Text(string, 3), OLESTR("ell"));
  EXPECT_TRUE(SysReAllocStringLen(&string, nullptr, 2));
  EXPECT_EQ(Text(string), OLESTR("el"));
  EXPECT_TRUE(SysReAllocString(&string, nullptr));
  EXPECT_EQ(string, nullptr);
}

TEST(Bstr, NullAndEmptyStayApartThroughCopiesAndMoves) {
  for (const bool null : {true, false}) {
    const Bstr original = null ? Bstr() : Bstr(OLESTR(""));
    Bstr copy = original;
    EXPECT_EQ(copy.IsNull(), null);
    EXPECT_EQ(Bstr::CopyOf(copy.Get()).IsNull(), null);
    const Bstr moved = std::move(copy);
    EXPECT_EQ(moved.IsNull(), null);
    EXPECT_TRUE(moved.IsEmpty());
    BSTR out;
    moved.CopyTo(&out);
    EXPECT_EQ(out == nullptr, null);
    SysFreeString(out);
  }
  EXPECT_FALSE(Bstr(View()).IsNull());
  EXPECT_TRUE(Bstr(static_cast<const OLECHAR*>(nullptr)).IsNull());
}

TEST(Bstr, OutFreesWhatWasHeldAndTakesWhatIsStored) {
  Bstr string(OLESTR("held"));
  *string.Out() = SysAllocString(OLESTR("stored"));
  EXPECT_EQ(string.View(), OLESTR("stored"));
  string.Attach(string.Get());  // its own string: stays
  EXPECT_EQ(string.View(), OLESTR("stored"));
  BSTR detached = string.Detach();
  EXPECT_TRUE(string.IsNull());
  string.Attach(detached);
  EXPECT_EQ(string.Get(), detached);
}

TEST(Bstr, ThrowsWhenACopyCannotBeAllocated) {
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000u), nullptr);
  EXPECT_EQ(Thrown([] { Bstr(OLESTR("x"), 0x80000000u); }), E_OUTOFMEMORY);
}

TEST(BstrEquality, ByUnitsOverTheWholeLength) {
  EXPECT_EQ(Bstr(kZeroInside, 3), Bstr(kZeroInside, 3));
  EXPECT_NE(Bstr(kZeroInside, 3), Bstr(OLESTR("a")));
  EXPECT_NE(Bstr(kZeroInside, 3), Bstr(OLESTR("a\0c"), 3));
  EXPECT_NE(Bstr(OLESTR("")), Bstr());
  EXPECT_EQ(Bstr(), Bstr());
  // Composed and decomposed: the same name, other units.
  const Bstr composed(OLESTR("\u00E9"));
  const Bstr decomposed(OLESTR("e\u0301"));
  EXPECT_FALSE(SameUnits(composed.Get(), decomposed.Get()));
  EXPECT_TRUE(SameName(composed.Get(), decomposed.Get()));
  EXPECT_TRUE(SameName(nullptr, Bstr(OLESTR("")).Get()));
}

}  // namespace
