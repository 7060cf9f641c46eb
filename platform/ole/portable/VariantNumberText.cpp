#include "platform/ole/portable/VariantNumberText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zdm {
namespace {

constexpr char16_t kCurrencySign = u'\u00A4';
constexpr LONGLONG kExponentLimit = LONGLONG{1} << 50;  // far past any text's length and overflow

constexpr bool IsSpace(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == u'\u00A0';
}
constexpr bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

class NumberParser {
 public:
  explicit NumberParser(std::u16string_view text) : text_(text) {}

  std::optional<ParsedNumber> Parse() {
    SkipSpaces();
    if (Take(u'&')) return ParseBits();
    if (!TakePrefixes() || !TakeDigits() || !TakeExponent() || !TakeSuffixes()) return std::nullopt;
    if (at_ != text_.size() || openParentheses_) return std::nullopt;
    Normalize();
    return number_;
  }

 private:
  char16_t Peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }
  bool Take(char16_t unit) {
    if (at_ == text_.size() || text_[at_] != unit) return false;
    ++at_;
    return true;
  }
  bool TakeEither(char16_t upper) {
    return Take(upper) || Take(static_cast<char16_t>(upper + (u'a' - u'A')));
  }
  void SkipSpaces() {
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
  }

  std::optional<ParsedNumber> ParseBits() {
    const unsigned base = TakeEither(u'H') ? 16 : 8;
    if (base == 8 && !TakeEither(u'O')) return std::nullopt;
    ULONGLONG bits = 0;
    std::size_t count = 0;
    for (; at_ < text_.size() && !IsSpace(text_[at_]); ++at_, ++count) {
      const char16_t unit = text_[at_];
      unsigned digit = base;
      if (IsDigit(unit)) digit = unit - u'0';
      if (unit >= u'A' && unit <= u'F') digit = unit - u'A' + 10U;
      if (unit >= u'a' && unit <= u'f') digit = unit - u'a' + 10U;
      if (digit >= base || bits > ~ULONGLONG{0} / base) return std::nullopt;
      bits = bits * base + digit;
    }
    SkipSpaces();
    if (count == 0 || at_ != text_.size()) return std::nullopt;
    number_.bits = bits;
    return number_;
  }

  bool TakeSign() {
    if (signed_) return false;
    if (Take(u'-')) {
      number_.decimal.negative = true;
    } else if (!Take(u'+')) {
      return false;
    }
    signed_ = true;
    return true;
  }

  bool TakePrefixes() {
    for (;;) {
      SkipSpaces();
      if (TakeSign()) continue;
      if (!currency_ && Take(kCurrencySign)) {
        currency_ = true;
      } else if (!parentheses_ && Take(u'(')) {
        parentheses_ = openParentheses_ = true;
        number_.decimal.negative = true;
      } else {
        return IsDigit(Peek()) || Peek() == u'.';
      }
    }
  }

  bool TakeDigits() {
    std::string& digits = number_.decimal.digits;
    while (IsDigit(Peek()) || (Peek() == u',' && !digits.empty())) {
      if (Peek() != u',') digits.push_back(static_cast<char>(Peek()));
      ++at_;
    }
    number_.decimal.exponent = static_cast<LONGLONG>(digits.size());
    if (Take(u'.')) {
      for (; IsDigit(Peek()); ++at_) digits.push_back(static_cast<char>(Peek()));
    }
    return !digits.empty();
  }

  bool TakeExponent() {
    if (!TakeEither(u'E')) return true;
    const bool negative = Take(u'-');
    if (!negative) Take(u'+');
    if (!IsDigit(Peek())) return false;
    LONGLONG exponent = 0;
    for (; IsDigit(Peek()); ++at_) {
      exponent = std::min(exponent * 10 + (Peek() - u'0'), kExponentLimit);
    }
    number_.decimal.exponent += negative ? -exponent : exponent;
    return true;
  }

  bool TakeSuffixes() {
    for (;;) {
      SkipSpaces();
      if (!parentheses_ && TakeSign()) continue;
      if (!currency_ && Take(kCurrencySign)) {
        currency_ = true;
      } else if (openParentheses_ && Take(u')')) {
        openParentheses_ = false;
      } else {
        return true;
      }
    }
  }

  void Normalize() {
    DigitText& number = number_.decimal;
    const std::size_t first = number.digits.find_first_not_of('0');
    if (first == std::string::npos) {
      number.digits.clear();
      number.exponent = 0;
      return;
    }
    number.digits.erase(number.digits.find_last_not_of('0') + 1);
    number.digits.erase(0, first);
    number.exponent -= static_cast<LONGLONG>(first);
  }

  std::u16string_view text_;
  std::size_t at_ = 0;
  ParsedNumber number_;
  bool signed_ = false;
  bool currency_ = false;
  bool parentheses_ = false;
  bool openParentheses_ = false;
};

/// "d.ddde±x" with `precision` digits, correctly rounded, exact ties to even.
std::string Scientific(double value, int precision) {
  char text[800];
  const int length = std::snprintf(text, sizeof text, "%.*e", precision - 1, value);
  return {text, static_cast<std::size_t>(length)};
}

/// Digits and exponent of a Scientific text, trailing zeros kept.
DigitText Split(const std::string& scientific) {
  const std::size_t e = scientific.find('e');
  DigitText number;
  for (const char c : scientific.substr(0, e)) {
    if (c >= '0' && c <= '9') number.digits.push_back(c);
  }
  number.exponent = std::atoi(scientific.c_str() + e + 1) + 1;
  return number;
}

/// Whether the first `precision` digits are followed by a five and nothing else.
bool IsTie(double value, int precision) {
  constexpr int kEveryDigit = 767;  // no double has more
  if (Split(Scientific(value, precision + 2)).digits.substr(static_cast<std::size_t>(precision)) !=
      "50") {
    return false;
  }
  std::string digits = Split(Scientific(value, kEveryDigit)).digits;
  digits.erase(digits.find_last_not_of('0') + 1);
  return digits.size() == static_cast<std::size_t>(precision) + 1;
}

}  // namespace

std::optional<ParsedNumber> ParseNumber(std::u16string_view text) {
  return NumberParser(text).Parse();
}

DigitText RoundedDigits(double value, int precision) {
  const double magnitude = std::fabs(value);
  DigitText number;
  number.negative = std::signbit(value);
  if (magnitude == 0) return number;
  // A tie is broken upwards by its neighbour above, which has the same leading digits.
  const double rounded =
      IsTie(magnitude, precision) ? std::nextafter(magnitude, HUGE_VAL) : magnitude;
  DigitText split = Split(Scientific(rounded, precision));
  number.digits = std::move(split.digits);
  number.exponent = split.exponent;
  number.digits.erase(number.digits.find_last_not_of('0') + 1);
  return number;
}

std::string RealText(double value, int precision) {
  if (std::isnan(value)) return "NAN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  if (value == 0) return "0";
  const DigitText number = RoundedDigits(value, precision);
  const auto count = static_cast<LONGLONG>(number.digits.size());
  const LONGLONG exponent = number.exponent - 1;  // as in d.ddd * 10^exponent
  std::string text = number.digits;
  if (exponent < -4 || exponent >= precision) {
    if (count > 1) text.insert(1, 1, '.');
    const std::string size = std::to_string(std::abs(exponent));
    text += exponent < 0 ? "E-" : "E+";
    text += size.size() < 2 ? "0" + size : size;
  } else if (exponent < 0) {
    text.insert(0, "0." + std::string(static_cast<std::size_t>(-number.exponent), '0'));
  } else if (count <= number.exponent) {
    text.append(static_cast<std::size_t>(number.exponent - count), '0');
  } else {
    text.insert(static_cast<std::size_t>(number.exponent), 1, '.');
  }
  return number.negative ? "-" + text : text;
}

}  // namespace zdm
