// What a value becomes as another type, through the invariant locale.
#include "tests/platform/ole/VariantTestSupport.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using namespace zdm::test;
using zdm::Variant;

struct Row {
  Variant source;
  int type;
  const char* expected;
  const char* wineDiffers = nullptr;  // why the row does not hold under Wine 8
};

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    if (row.wineDiffers != nullptr && UnderWine()) continue;
    EXPECT_EQ(Converted(row.source, row.type), row.expected)
        << "type " << row.source.type() << " " << Describe(row.source.Get()) << " as type "
        << row.type;
  }
}

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(VariantConvert, RealsRoundToEvenAndStayInRange) {
  Check({{R8(0.5), VT_I4, "0"},
         {R8(1.5), VT_I4, "2"},
         {Cy(25000), VT_I2, "2"},
         {Cy(-10000), VT_I8, "-1", "negative currency is rounded down once too often"},
         {Dec(false, 0, 25, 1), VT_I4, "2"},
         {R8(127.5), VT_I1, "overflow"},
         {R8(-128.5), VT_I1, "-128"},
         {R8(-2147483648.5), VT_I4, "-2147483648"},
         {R8(2147483647.5), VT_INT, "overflow"},
         {R8(4294967295.4), VT_UINT, "4294967295"},
         {R8(9223372036854774784.0), VT_I8, "9223372036854774784", "the last doubles overflow"},
         {R8(9223372036854775808.0), VT_I8, "overflow"},
         {R8(18446744073709549568.0), VT_UI8, "18446744073709549568"},
         {R8(18446744073709551616.0), VT_UI8, "overflow"},
         {R8(kNan), VT_I4, "overflow", "not a number becomes an arbitrary integer"},
         {R8(3.5e38), VT_R4, "overflow"},
         {R8(3.4028234663852886e38), VT_R4, "3.40282347e+38"}});
}

TEST(VariantConvert, IntegersOverflowButKeepTheirBitsAtTheSameWidth) {
  Check({{I4(32768), VT_I2, "overflow"},
         {I2(-1), VT_UI4, "overflow"},
         {I8(2147483648), VT_UI2, "overflow", "the high bits are cut off"},
         {I1(-1), VT_UI1, "255"},
         {UI1(255), VT_I1, "-1"},
         {I4(-1), VT_UI4, "4294967295"},
         {I4(16777217), VT_R4, "16777216"},
         {I8(9007199254740993), VT_R8, "9007199254740992"}});
}

TEST(VariantConvert, BooleansAreMinusOneInEveryWidth) {
  Check({{Bool(VARIANT_TRUE), VT_I1, "-1"},
         {Bool(VARIANT_TRUE), VT_UI4, "4294967295"},
         {Bool(VARIANT_TRUE), VT_CY, "-10000"},
         {Bool(VARIANT_TRUE), VT_DECIMAL, "-1e-0", "true is one as a DECIMAL"},
         {Bool(VARIANT_TRUE), VT_BSTR, "\"-1\""},
         {R8(-0.0), VT_BOOL, "0"},
         {R8(0.1), VT_BOOL, "-1"},
         {Text("tRUE"), VT_BOOL, "-1"},
         {Text("#TRUE#"), VT_BOOL, "-1"},
         {Text("#true#"), VT_BOOL, "mismatch"},
         {Text("0.0"), VT_BOOL, "0"},
         {Text("yes"), VT_BOOL, "mismatch"}});
  EXPECT_EQ(Converted(Bool(VARIANT_TRUE), VT_BSTR, VARIANT_ALPHABOOL), "\"True\"");
  EXPECT_EQ(Converted(Bool(VARIANT_FALSE), VT_BSTR, VARIANT_ALPHABOOL), "\"False\"");
}

TEST(VariantConvert, RealsPrintWithFifteenOrSevenDigits) {
  Check({{R8(-0.0), VT_BSTR, "\"0\""},
         {R8(0.1 + 0.2), VT_BSTR, "\"0.3\""},
         {R8(1.0 / 3), VT_BSTR, "\"0.333333333333333\""},
         {R8(0.0001), VT_BSTR, "\"0.0001\""},
         {R8(0.00001), VT_BSTR, "\"1E-05\""},
         {R8(999999999999999.0), VT_BSTR, "\"999999999999999\""},
         {R8(1e15), VT_BSTR, "\"1E+15\""},
         {R8(1.7976931348623157e308), VT_BSTR, "\"1.79769313486232E+308\""},
         {R8(5e-324), VT_BSTR, "\"4.94065645841247E-324\""},
         {R4(0.1F), VT_BSTR, "\"0.1\""},
         {R4(16777216.0F), VT_BSTR, "\"1.677722E+07\""},
         {R4(654322.25F), VT_BSTR, "\"654322.3\""}});
}

TEST(VariantConvert, ExactNumbersPrintTheirDigits) {
  Check({{UI4(4294967295), VT_BSTR, "\"4294967295\""},
         {I8(std::numeric_limits<LONGLONG>::min()), VT_BSTR, "\"-9223372036854775808\""},
         {UI8(18446744073709551615U), VT_BSTR, "\"18446744073709551615\""},
         {Cy(-1), VT_BSTR, "\"-0.0001\""},
         {Dec(false, 0, 1230, 2), VT_BSTR, "\"12.3\""},
         {Dec(true, 0, 0, 0), VT_BSTR, "\"0\""},
         {Dec(false, 0, 1, 28), VT_BSTR, "\"0.0000000000000000000000000001\""},
         {Dec(true, 0xFFFFFFFF, ~ULONGLONG{0}, 0), VT_BSTR, "\"-79228162514264337593543950335\""}});
}

TEST(VariantConvert, TextReadsAsANumber) {
  Check({{Text(" 12 "), VT_I4, "12"},
         {Text("- 5"), VT_I4, "-5"},
         {Text("5-"), VT_I4, "-5"},
         {Text("(5)"), VT_I4, "-5"},
         {Text(".5"), VT_R8, "0.5"},
         {Text("1E+3"), VT_R8, "1000"},
         {Text("1.2345678901234567"), VT_R8, "1.2345678901234567"},
         {Text("1e309"), VT_R8, "overflow"},
         {Text("1,234.5"), VT_R8, "1234.5"},
         {Text("1,,2"), VT_R8, "12"},
         {Text("12,.5"), VT_R8, "12.5"},
         {Text("\xA4 5"), VT_I4, "5"},
         {Text("4294967295"), VT_UI4, "4294967295"},
         {Text("-1"), VT_UI4, "overflow"},
         {Text("9223372036854775807"), VT_I8, "9223372036854775807"},
         {Text("9223372036854775808"), VT_I8, "overflow"},
         {Text("1e308"), VT_R8, "1e+308", "digits are added up in floating point"},
         {Text("&HFFFFFFFF"), VT_I4, "-1"},
         {Text("&o17"), VT_I4, "15"}});
  for (const char* text : {"", " ", "-", ".", "1e", "1e+", ",5", "1.2.3", "12abc", "1 e3", "12 34",
                           "0x10", "&H", "&H1G", "(5", "5)", "-5-", "inf", "nan"}) {
    EXPECT_EQ(Converted(Text(text), VT_R8), "mismatch") << text;
    EXPECT_EQ(Converted(Text(text), VT_I4), "mismatch") << text;
    EXPECT_EQ(Converted(Text(text), VT_DECIMAL), "mismatch") << text;
  }
}

TEST(VariantConvert, CurrencyKeepsFourDecimals) {
  Check({{R8(1.23456), VT_CY, "12346"},
         {R8(-0.00005), VT_CY, "-1"},
         {R8(0.00015), VT_CY, "1"},  // the double lies below
         {R8(123456789012345.59), VT_CY, "1234567890123455938"},
         {R8(922337203685478.0), VT_CY, "overflow"},
         {I4(-7), VT_CY, "-70000"},
         {Dec(false, 0, 25, 5), VT_CY, "2", "ties go up"},
         {Text("0.12345"), VT_CY, "1234", "text goes through a double, ties go up"},
         {Text("922337203685477.5807"), VT_CY, "9223372036854775807", "the last values overflow"},
         {Cy(15000), VT_R8, "1.5"},
         {Cy(-1), VT_DECIMAL, "-1e-4"}});
}

TEST(VariantConvert, DecimalsKeepTheDigitsThatCount) {
  const Variant largest = Dec(false, 0xFFFFFFFF, ~ULONGLONG{0}, 0);
  Check({{R8(0.1), VT_DECIMAL, "1e-1"},
         {R8(1.0 / 3), VT_DECIMAL, "333333333333333e-15", "sixteen digits are kept"},
         {R4(123456.789F), VT_DECIMAL, "1234568e-1", "eight digits are kept"},
         {R8(1e-29), VT_DECIMAL, "0e-0"},
         {R8(1e29), VT_DECIMAL, "overflow"},
         {Text("7.9228162514264337593543950335"), VT_DECIMAL, "79228162514264337593543950335e-28"},
         {Text("79228162514264337593543950336"), VT_DECIMAL, "overflow"},
         {Text("1.23456789012345678901234567895"), VT_DECIMAL, "12345678901234567890123456790e-28",
          "a twenty-ninth decimal overflows instead of rounding"},
         {Text("0.00000000000000000000000000005"), VT_DECIMAL, "0e-0",
          "the scale exceeds twenty-eight"},
         {largest, VT_R8, "7.9228162514264338e+28"},
         {largest, VT_I8, "overflow"},
         {Dec(false, 0, ~ULONGLONG{0}, 0), VT_UI8, "18446744073709551615"}});
}

TEST(VariantConvert, DatesPrintMonthDayYear) {
  Check({{Date(0), VT_BSTR, "\"00:00:00\""},
         {Date(3.34), VT_BSTR, "\"01/02/1900 08:09:36\""},
         {Date(-1.25), VT_BSTR, "\"12/29/1899 06:00:00\""},
         {Date(36526.999999), VT_BSTR, "\"01/02/2000 00:00:00\""},
         {Date(2958465.99999), VT_BSTR, "\"12/31/9999 23:59:59\""},
         {Date(-657434), VT_BSTR, "\"01/01/0100\"", "the year is not padded"},
         {Date(2958466), VT_BSTR, "failed"},
         {R8(2958466), VT_DATE, "overflow"},
         {I4(-657435), VT_DATE, "overflow"}});
}

TEST(VariantConvert, TextReadsAsADate) {
  Check({{Text("01/02/1900 08:09:36"), VT_DATE, "3.340000"},
         {Text("1/2/2000"), VT_DATE, "36527.000000"},
         {Text("2000-1-2 3:4:5"), VT_DATE, "36527.127836"},
         {Text("Sunday, Jan 2, 2000"), VT_DATE, "36527.000000"},
         {Text("2-Jan-00"), VT_DATE, "36527.000000"},
         {Text("1/2/49"), VT_DATE, "54425.000000"},
         {Text("12:30 1/2/2000"), VT_DATE, "36527.520833"},
         {Text("12/29/1899 06:00:00"), VT_DATE, "-1.250000"},
         {Text("12:30 AM"), VT_DATE, "0.020833"},
         {Text("1 pm"), VT_DATE, "0.541667"},
         {Text("2/29/1900"), VT_DATE, "mismatch"},
         {Text("12/31/9999"), VT_DATE, "2958465.000000"},
         {Text("1/2/2000 25:00"), VT_DATE, "mismatch"},
         {Text("1//2/2000"), VT_DATE, "mismatch"},
         {Text("1/2/2000 x"), VT_DATE, "mismatch"},
         {Text("mar"), VT_DATE, "mismatch"},
         {Text(""), VT_DATE, "mismatch"}});
}

TEST(VariantConvert, NothingAndErrorsConvertToLittle) {
  Check({{Empty(), VT_I4, "0"},
         {Empty(), VT_DATE, "0.000000"},
         {Empty(), VT_NULL, "type 1"},
         {Empty(VT_NULL), VT_EMPTY, "mismatch"},
         {Empty(VT_NULL), VT_BSTR, "mismatch"},
         {Text("x"), VT_EMPTY, "empty"},
         {Empty(VT_UNKNOWN), VT_BSTR, "mismatch"},
         {I4(1), VT_ERROR, "mismatch"},
         {I4(1), 15, "bad type"},
         {I4(1), VT_ARRAY | VT_I4, "mismatch"}});
}

TEST(VariantConvert, WorksInPlaceAndKeepsTheTargetOnFailure) {
  Variant value = Text("12");
  Variant number;
  ASSERT_EQ(VariantChangeType(number.Out(), Inside(value), 0, VT_I4), S_OK);  // without a locale
  EXPECT_EQ(Describe(number.Get()), "12");
  EXPECT_EQ(value.ChangeType(VT_I4), S_OK);
  EXPECT_EQ(Describe(value.Get()), "12");
  Variant text = Text("kept");
  EXPECT_EQ(text.ChangeType(VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(Describe(text.Get()), "\"kept\"");
}

TEST(VariantConvert, ANullTextStaysNullAndIsNoNumber) {
  Variant null = Variant::FromText(nullptr);
  for (const int type : {VT_I4, VT_R8, VT_BOOL, VT_CY, VT_DATE, VT_DECIMAL}) {
    EXPECT_EQ(Converted(null, type), "mismatch") << type;
  }
  EXPECT_EQ(null.ChangeType(VT_BSTR), S_OK);
  EXPECT_EQ(Describe(null.Get()), "null");
}

TEST(VariantConvert, RefusesADamagedDecimal) {
  for (const int scale : {29, 128, 255}) {
    for (const int type : {VT_I4, VT_R8, VT_BSTR, VT_DECIMAL}) {
      EXPECT_EQ(Converted(Dec(false, 0, 1, scale), type), "failed") << scale << " to " << type;
    }
  }
}

}  // namespace
