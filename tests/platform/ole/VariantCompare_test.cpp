// VarCmp, on which the merging of properties relies.
#include "tests/platform/ole/VariantTestSupport.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zdm::test;
using zdm::Variant;

HRESULT Compare(const Variant& left, const Variant& right) {
  VARIANT a = left.Get();
  VARIANT b = right.Get();
  return VarCmp(&a, &b, LOCALE_USER_DEFAULT, 0);
}

constexpr int kLess = VARCMP_LT;
constexpr int kEqual = VARCMP_EQ;
constexpr int kGreater = VARCMP_GT;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(VarCmp, OrdersByTheTypesOfBothSides) {
  struct {
    Variant left;
    Variant right;
    int expected;
    bool wineDiffers = false;
  } const rows[] = {
      {Empty(), Empty(), kEqual},  // two of a type
      {I2(-1), I2(1), kLess},
      {I4(-1), I4(-1), kEqual},
      {I8(std::numeric_limits<LONGLONG>::min()), I8(1), kLess},
      {UI1(1), UI1(255), kLess},
      {Bool(1), Bool(-1), kGreater},
      {R4(1), R4(1.00001F), kLess},
      {R8(1), R8(1.00001), kLess},
      {R8(kInfinity), R8(kInfinity), kEqual},
      {R8(-kInfinity), R8(1e308), kLess},
      {Cy(-1), Cy(1), kLess},
      {Date(2), Date(1.5), kGreater},
      {Variant::FromText(nullptr), Text(""), kEqual},
      {Empty(), I4(0), kEqual},  // of two types
      {Empty(), Text(""), kEqual},
      {Empty(), Text("a"), kLess},
      {Empty(), Bool(-1), kGreater},
      {I2(5), I4(5), kEqual},
      {I4(5), I8(6), kLess},
      {Bool(-1), I4(-1), kEqual},
      {UI1(255), I2(-1), kGreater},
      {I4(5), R8(5), kEqual},
      {I8(9007199254740993), R8(9007199254740992.0), kEqual},  // as doubles
      {R8(0.1), R4(0.1F), kEqual},                             // as floats
      {R8(1e300), R4(1), kGreater},                            // past the floats
      {R8(-1e300), R4(1), kLess},
      {Cy(1000), R8(0.10001), kLess},  // as doubles
      {Cy(50000), I4(5), kEqual},
      {I8(9223372036854775807), Cy(5), kGreater},  // past the currency
      {Date(5), I4(5), kEqual},
      {Dec(false, 0, 1, 1), R8(0.1), kEqual},  // as decimals
      {Dec(false, 0, 1, 1), R4(0.1F), kEqual},
      {Dec(false, 0, 0x20000000000001, 0), I8(9007199254740993), kEqual},
      {Dec(false, 0, 100, 2), Dec(false, 0, 1, 0), kEqual},
      {Dec(true, 0, 0, 0), I4(0), kEqual},
      {Dec(true, 0, 5, 0), Dec(true, 0, 45, 1), kLess},
      {Dec(false, 0, 1, 0), R8(1e300), kLess},
      {Bool(-1), Dec(false, 0, 1, 1), kLess, true},  // Wine: true is one as a DECIMAL
      {Text("a"), Text("a"), kEqual},
      {Text("a"), Text("b"), kLess},
      {Text("5"), I4(5), kGreater},  // text is above numbers
      {I4(5), Text(""), kLess},
      {Empty(VT_ERROR), Make(VT_ERROR, LONG{5}), kEqual},
  };
  for (const auto& row : rows) {
    if (row.wineDiffers && UnderWine()) continue;
    EXPECT_EQ(static_cast<int>(Compare(row.left, row.right)), row.expected)
        << row.left.type() << " " << Describe(row.left.Get()) << " with " << row.right.type() << " "
        << Describe(row.right.Get());
    EXPECT_EQ(static_cast<int>(Compare(row.right, row.left)), 2 - row.expected);
  }
}

TEST(VarCmp, NullIsNeitherEqualNorOrdered) {
  const Variant null = Empty(VT_NULL);
  for (const Variant& other : {Empty(), Empty(VT_NULL), I4(0), Text("a")}) {
    EXPECT_EQ(static_cast<int>(Compare(null, other)), static_cast<int>(VARCMP_NULL));
    EXPECT_EQ(static_cast<int>(Compare(other, null)), static_cast<int>(VARCMP_NULL));
  }
}

TEST(VarCmp, NotANumberIsAboveAllOnEitherSide) {
  for (const Variant& other : {R8(kNan), R8(1), R8(kInfinity), I4(0), Date(1)}) {
    EXPECT_EQ(static_cast<int>(Compare(R8(kNan), other)), kGreater) << Describe(other.Get());
    EXPECT_EQ(static_cast<int>(Compare(other, R8(kNan))), kGreater) << Describe(other.Get());
  }
}

TEST(VarCmp, RefusesADamagedDecimal) {
  if (UnderWine()) GTEST_SKIP() << "Wine believes the scale";
  Variant straySign = Dec(false, 0, 1, 0);
  Inside(straySign)->decVal.sign = 0x01;
  for (const Variant& bad : {Dec(false, 0, 1, 29), Dec(true, 0, 1, 128), Dec(false, 0, 1, 255),
                             Dec(false, 0, 0, 255), straySign}) {
    for (const Variant& other : {bad, Dec(false, 0, 1, 28), I4(1), R8(1), Cy(1), Empty()}) {
      EXPECT_EQ(Compare(bad, other), E_INVALIDARG)
          << int{bad.Get().decVal.scale} << " with type " << other.type();
      EXPECT_EQ(Compare(other, bad), E_INVALIDARG)
          << "type " << other.type() << " with " << int{bad.Get().decVal.scale};
    }
  }
}

TEST(VarCmp, RefusesTypesItDoesNotCompare) {
  for (const int type : {VT_I1, VT_UI2, VT_UI4, VT_UNKNOWN, VT_DISPATCH}) {
    EXPECT_EQ(Compare(Empty(type), Empty(type)), DISP_E_TYPEMISMATCH) << type;
  }
  EXPECT_EQ(Compare(Empty(VT_ERROR), I4(0)), DISP_E_TYPEMISMATCH);
  for (const int type : {int{VT_UI8}, int{VT_INT}, int{VT_UINT}, VT_ARRAY | VT_I4}) {
    EXPECT_EQ(Compare(Empty(type), Empty(type)), DISP_E_BADVARTYPE) << type;
  }
}

}  // namespace
