// Exact decimal numbers: what DECIMAL, currency, integers and the digits of a text have in common.
#pragma once

#include "platform/ole/portable/Variant.h"

#include <optional>
#include <string>

namespace zdm {

__extension__ using Uint128 = unsigned __int128;

constexpr Uint128 kMaxDecimal = (Uint128{1} << 96) - 1;
constexpr int kMaxDecimalScale = 28;
constexpr int kCurrencyScale = 4;

/// (negative ? -1 : 1) * magnitude / 10^scale, with a scale from 0 to 28.
struct Decimal {
  bool negative = false;
  Uint128 magnitude = 0;
  int scale = 0;

  static Decimal FromInteger(LONGLONG value);
  static Decimal FromCurrency(LONGLONG tenThousandths);
  /// `value` is valid.
  static Decimal FromDECIMAL(const DECIMAL& value);
};

/// Whether `value` has a scale up to 28 and no bits beside the sign's.
bool IsValid(const DECIMAL& value);

/// Digits of a number as a person writes them: (negative ? -1 : 1) * 0.digits * 10^exponent.
/// No leading and no trailing zeros; no digits at all for zero.
struct DigitText {
  bool negative = false;
  std::string digits;
  LONGLONG exponent = 0;
};

/// The number times 10^scale, rounded to even; nothing when that takes more than 96 bits.
std::optional<Uint128> ScaledMagnitude(const Decimal& number, int scale);
std::optional<Uint128> ScaledMagnitude(const DigitText& number, int scale);

/// The nearest DECIMAL, rounded to even, with no more decimals than the digits need.
std::optional<Decimal> ToDecimal(const DigitText& number);

/// With a type field of 0. Scales are 0 to 28 and magnitudes fit, or nothing is answered.
DECIMAL ToDECIMAL(const Decimal& number);

/// Nearest double.
double ToDouble(const Decimal& number);
double ToDouble(const DigitText& number);

/// -1, 0, 1. Signs of zero do not count.
int Compare(const Decimal& left, const Decimal& right);

/// Plain digits without exponent and trailing zeros after the point: "-0.05", "12", "0".
std::string ToText(const Decimal& number);

}  // namespace zdm
