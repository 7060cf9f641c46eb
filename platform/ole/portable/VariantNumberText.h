// Numbers in text, as the invariant locale reads and writes them.
#pragma once

#include "platform/ole/portable/VariantDecimal.h"

#include <optional>
#include <string>
#include <string_view>

namespace zdm {

/// A number read from a text: decimal digits, or the bits of "&H1F" and "&O17".
struct ParsedNumber {
  DigitText decimal;
  std::optional<ULONGLONG> bits;
};

/// Reads a whole text: spaces around, one sign before or after or parentheses for a negative
/// number, the currency sign, commas between digits before the point, an exponent. Nothing when
/// the text is not a number.
std::optional<ParsedNumber> ParseNumber(std::u16string_view text);

constexpr int kDoubleDigits = 15;
constexpr int kFloatDigits = 7;

/// The `precision` leading digits of a finite number; exact ties go away from zero.
DigitText RoundedDigits(double value, int precision);

/// As printf's %.*G, with exact ties away from zero and without the sign of zero; "INF", "-INF",
/// "NAN".
std::string RealText(double value, int precision);

}  // namespace zdm
