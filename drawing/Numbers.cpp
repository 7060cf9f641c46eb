#include "drawing/Numbers.h"

#include "drawing/GroupReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace zdm {

namespace {

template <class Number, class... Base>
std::optional<Number> Parse(std::string_view text, Base... base) {
  text = Trimmed(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  Number value = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, value, base...);
  return !text.empty() && error == std::errc() && at == end ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<double> ParseReal(std::string_view text, bool* comma) {
  constexpr std::size_t kLongest = 64;
  const auto finite = [](std::optional<double> value) {
    return value && std::isfinite(*value) ? value : std::nullopt;
  };
  if (text.find(',') == std::string_view::npos || text.size() > kLongest) {
    return finite(Parse<double>(text));
  }
  std::string pointed(text);
  std::ranges::replace(pointed, ',', '.');
  const std::optional<double> value = finite(Parse<double>(pointed));
  if (value && comma != nullptr) *comma = true;
  return value;
}

std::optional<LONG> ParseLong(std::string_view text) { return Parse<LONG>(text); }

std::optional<ULONGLONG> ParseHandle(std::string_view text) {
  const auto handle = Parse<ULONGLONG>(text, 16);
  return handle && *handle != 0 ? handle : std::nullopt;
}

std::string RealText(double value) {
  char digits[40];
  const auto [end, error] = std::to_chars(digits, digits + sizeof(digits), value);
  std::string text(digits, end);
  if (text.find_first_of(".en") == std::string::npos) text += ".0";
  return text;
}

std::string HandleText(ULONGLONG handle) {
  char digits[20];
  std::snprintf(digits, sizeof(digits), "%llX", static_cast<unsigned long long>(handle));
  return digits;
}

}  // namespace zdm
