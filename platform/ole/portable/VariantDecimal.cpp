#include "platform/ole/portable/VariantDecimal.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace zdm {
namespace {

Uint128 PowerOfTen(int exponent) {
  Uint128 power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

Uint128 DivideToEven(Uint128 value, Uint128 divisor) {
  const Uint128 quotient = value / divisor;
  const Uint128 rest = value % divisor;
  const Uint128 other = divisor - rest;
  const bool up = rest > other || (rest == other && (quotient & 1) != 0);
  return up ? quotient + 1 : quotient;
}

std::string Digits(Uint128 value) {
  std::string digits;
  do {
    digits.push_back(static_cast<char>('0' + static_cast<int>(value % 10)));
    value /= 10;
  } while (value != 0);
  std::reverse(digits.begin(), digits.end());
  return digits;
}

/// Nearest double of decimal digits times a power of ten; overflow is infinity.
double ReadDouble(const std::string& digits, LONGLONG exponent, bool negative) {
  double value = 0;
  const std::string text = (digits.empty() ? "0" : digits) + "e" + std::to_string(exponent);
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    const bool large = exponent + static_cast<LONGLONG>(digits.size()) > 0;
    value = large ? std::numeric_limits<double>::infinity() : 0;
  }
  return negative ? -value : value;
}

}  // namespace

Decimal Decimal::FromInteger(LONGLONG value) {
  const ULONGLONG bits = static_cast<ULONGLONG>(value);
  return {value < 0, value < 0 ? 0 - bits : bits, 0};
}

Decimal Decimal::FromCurrency(LONGLONG tenThousandths) {
  Decimal number = FromInteger(tenThousandths);
  number.scale = kCurrencyScale;
  return number;
}

Decimal Decimal::FromDECIMAL(const DECIMAL& value) {
  return {(value.sign & DECIMAL_NEG) != 0, Uint128{value.Hi32} << 64 | value.Lo64, value.scale};
}

bool IsValid(const DECIMAL& value) {
  return value.scale <= kMaxDecimalScale && (value.sign & ~DECIMAL_NEG) == 0;
}

std::optional<Uint128> ScaledMagnitude(const Decimal& number, int scale) {
  if (number.scale >= scale) {
    return DivideToEven(number.magnitude, PowerOfTen(number.scale - scale));
  }
  const Uint128 factor = PowerOfTen(scale - number.scale);
  if (number.magnitude > kMaxDecimal / factor) return std::nullopt;
  return number.magnitude * factor;
}

std::optional<Uint128> ScaledMagnitude(const DigitText& number, int scale) {
  // The first `kept` digits are left of the point of the scaled number.
  const LONGLONG kept = number.exponent + scale;
  const auto count = static_cast<LONGLONG>(number.digits.size());
  if (count == 0 || kept < 0) return Uint128{0};
  if (kept > 29) return std::nullopt;
  Uint128 value = 0;
  for (LONGLONG i = 0; i < kept; ++i) {
    const int digit = i < count ? number.digits[static_cast<std::size_t>(i)] - '0' : 0;
    value = value * 10 + static_cast<unsigned>(digit);
  }
  if (kept < count) {
    const char next = number.digits[static_cast<std::size_t>(kept)];
    const bool tie = next == '5' && kept + 1 == count;
    if (tie ? (value & 1) != 0 : next >= '5') ++value;
  }
  if (value > kMaxDecimal) return std::nullopt;
  return value;
}

std::optional<Decimal> ToDecimal(const DigitText& number) {
  const auto decimals = static_cast<LONGLONG>(number.digits.size()) - number.exponent;
  for (auto scale = static_cast<int>(std::clamp<LONGLONG>(decimals, 0, kMaxDecimalScale));
       scale >= 0; --scale) {
    const std::optional<Uint128> magnitude = ScaledMagnitude(number, scale);
    if (!magnitude) continue;
    if (*magnitude == 0) return Decimal{};
    return Decimal{number.negative, *magnitude, scale};
  }
  return std::nullopt;
}

DECIMAL ToDECIMAL(const Decimal& number) {
  DECIMAL value = {};
  value.scale = static_cast<BYTE>(number.scale);
  value.sign = number.negative ? DECIMAL_NEG : BYTE{0};
  value.Hi32 = static_cast<ULONG>(number.magnitude >> 64);
  value.Lo64 = static_cast<ULONGLONG>(number.magnitude);
  return value;
}

double ToDouble(const Decimal& number) {
  if (number.magnitude == 0) return 0;
  return ReadDouble(Digits(number.magnitude), -number.scale, number.negative);
}

double ToDouble(const DigitText& number) {
  const auto count = static_cast<LONGLONG>(number.digits.size());
  return ReadDouble(number.digits, number.exponent - count, number.negative);
}

int Compare(const Decimal& left, const Decimal& right) {
  const bool leftBelow = left.negative && left.magnitude != 0;
  const bool rightBelow = right.negative && right.magnitude != 0;
  if (leftBelow != rightBelow) return leftBelow ? -1 : 1;
  // Whole parts first: the fractions then fit 128 bits at the scale of either.
  const Uint128 leftUnit = PowerOfTen(left.scale);
  const Uint128 rightUnit = PowerOfTen(right.scale);
  Uint128 a = left.magnitude / leftUnit;
  Uint128 b = right.magnitude / rightUnit;
  if (a == b) {
    const int scale = std::max(left.scale, right.scale);
    a = left.magnitude % leftUnit * PowerOfTen(scale - left.scale);
    b = right.magnitude % rightUnit * PowerOfTen(scale - right.scale);
  }
  if (a == b) return 0;
  return (a < b) != leftBelow ? -1 : 1;
}

std::string ToText(const Decimal& number) {
  std::string text = Digits(number.magnitude);
  const auto decimals = static_cast<std::size_t>(number.scale);
  if (decimals > 0) {
    if (text.size() <= decimals) text.insert(0, decimals + 1 - text.size(), '0');
    text.insert(text.size() - decimals, 1, '.');
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  if (number.negative && number.magnitude != 0) text.insert(0, 1, '-');
  return text;
}

}  // namespace zdm
