#include "platform/system/Text.h"

#include "platform/ole/Bstr.h"

#include <cstdint>

#if !defined(_WIN32)
#include <unicode/uchar.h>

DWORD CharLowerBuffW(WCHAR* text, DWORD count) {
  if (text == nullptr) return 0;
  for (DWORD i = 0; i < count; ++i) {
    const UChar32 lower = u_tolower(text[i]);
    if (u_toupper(lower) == text[i]) text[i] = static_cast<WCHAR>(lower);
  }
  return count;
}
#endif

namespace zdm {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(std::uint32_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return (unit & 0xFC00) == 0xDC00; }

void AppendUtf8(std::string& out, std::uint32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
    return;
  }
  const int trailing = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  constexpr std::uint32_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
  out += static_cast<char>(kLead[trailing] | (point >> (6 * trailing)));
  for (int left = trailing - 1; left >= 0; --left) {
    out += static_cast<char>(0x80 | ((point >> (6 * left)) & 0x3F));
  }
}

void AppendUtf16(WideString& out, std::uint32_t point) {
  if (point < 0x10000) {
    out += static_cast<OLECHAR>(point);
    return;
  }
  point -= 0x10000;
  out += static_cast<OLECHAR>(0xD800 + (point >> 10));
  out += static_cast<OLECHAR>(0xDC00 + (point & 0x3FF));
}

// Reads one character at `at` and moves past it, or past the longest piece that begins like one.
std::uint32_t ReadUtf8(std::string_view text, std::size_t& at) {
  const std::uint32_t lead = static_cast<std::uint8_t>(text[at++]);
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kReplacement;
  const int trailing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  std::uint32_t point = lead & (0x3FU >> trailing);
  // The first trailing byte excludes overlong forms, surrogates and points past U+10FFFF.
  std::uint32_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  std::uint32_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (int i = 0; i < trailing; ++i) {
    if (at == text.size()) return kReplacement;
    const std::uint32_t byte = static_cast<std::uint8_t>(text[at]);
    if (byte < low || byte > high) return kReplacement;
    point = (point << 6) | (byte & 0x3F);
    low = 0x80;
    high = 0xBF;
    ++at;
  }
  return point;
}

Bstr LowerCaseCopy(WideView text) {
  Bstr copy(text);
  CharLowerBuffW(copy.Get(), copy.Length());
  return copy;
}

}  // namespace

std::string ToUtf8(WideView text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::uint32_t point = text[i];
    if (IsHighSurrogate(point) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      point = 0x10000 + ((point & 0x3FF) << 10) + (text[++i] & 0x3FFU);
    } else if (IsHighSurrogate(point) || IsLowSurrogate(point)) {
      point = kReplacement;
    }
    AppendUtf8(out, point);
  }
  return out;
}

WideString FromUtf8(std::string_view text) {
  WideString out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) AppendUtf16(out, ReadUtf8(text, at));
  return out;
}

bool EqualIgnoringCase(WideView left, WideView right) {
  return SameName(LowerCaseCopy(left).Get(), LowerCaseCopy(right).Get());
}

}  // namespace zdm
