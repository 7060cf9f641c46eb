#include "drawing/TextCodec.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <utility>

namespace zdm {

namespace {

constexpr WideView kEscape = OLESTR("\\U+");
constexpr std::size_t kDigits = 4;

constexpr std::array<std::pair<std::string_view, unsigned>, 13> kNames = {{
    {"ASCII", kLatin1CodePage},
    {"BIG5", 950},
    {"GB2312", 936},
    {"GBK", 936},
    {"JOHAB", 1361},
    {"KSC5601", 949},
    {"LATIN1", kLatin1CodePage},
    {"MACROMAN", 10000},
    {"MACINTOSH", 10000},
    {"SHIFTJIS", 932},
    {"SJIS", 932},
    {"UTF8", kUtf8CodePage},
    {"UTF", kUtf8CodePage},
}};

std::optional<unsigned> NumberOf(std::string_view digits) {
  unsigned number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [at, error] = std::from_chars(digits.data(), end, number);
  return error == std::errc() && at == end && !digits.empty() ? std::optional(number)
                                                              : std::nullopt;
}

int HexDigit(OLECHAR unit) {
  if (unit >= '0' && unit <= '9') return unit - '0';
  if (unit >= 'A' && unit <= 'F') return unit - 'A' + 10;
  if (unit >= 'a' && unit <= 'f') return unit - 'a' + 10;
  return -1;
}

/// The character of the four digits; -1 for others.
int EscapedUnit(WideView digits) {
  if (digits.size() < kDigits) return -1;
  int unit = 0;
  for (const OLECHAR each : digits.substr(0, kDigits)) {
    const int digit = HexDigit(each);
    if (digit < 0) return -1;
    unit = unit * 16 + digit;
  }
  return unit;
}

}  // namespace

std::optional<unsigned> CodePageOf(std::string_view name) {
  std::string key;
  for (const char c : name) {
    if (c == '-' || c == '_' || c == ' ') continue;
    key += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  }
  const auto* const named =
      std::ranges::find(kNames, std::string_view(key), [](const auto& row) { return row.first; });
  if (named != kNames.end()) return named->second;
  constexpr std::string_view kLatin = "ISO8859";
  if (key.starts_with(kLatin)) {
    const auto part = NumberOf(std::string_view(key).substr(kLatin.size()));
    return part && *part >= 1 && *part <= 16 ? std::optional(kLatin1CodePage - 1 + *part)
                                             : std::nullopt;
  }
  for (const std::string_view prefix : {"ANSI", "DOS", "CP", "WINDOWS", "IBM", ""}) {
    if (!key.starts_with(prefix)) continue;
    return NumberOf(std::string_view(key).substr(prefix.size()));
  }
  return std::nullopt;
}

WideString TextCodec::Show(std::string_view bytes) const {
  WideString text = FromCodePage(bytes.substr(0, bytes.find('\0')), codePage);
  std::size_t at = text.find(kEscape);
  if (at == WideString::npos) return text;
  WideString shown(text, 0, at);
  while (at < text.size()) {
    const WideView rest = WideView(text).substr(at);
    const int unit = rest.starts_with(kEscape) ? EscapedUnit(rest.substr(kEscape.size())) : -1;
    shown += unit > 0 ? static_cast<OLECHAR>(unit) : rest[0];
    at += unit > 0 ? kEscape.size() + kDigits : 1;
  }
  return shown;
}

std::string TextCodec::Write(WideView text) const {
  WideString line;
  for (const OLECHAR unit : text) {
    if (unit >= 0x20) {
      line += unit;
    } else {
      line += OLESTR('^');
      line += static_cast<OLECHAR>(unit + 0x40);
    }
  }
  if (const auto bytes = ToCodePage(line, codePage)) return *bytes;
  std::string escaped;
  for (const OLECHAR unit : line) {
    if (const auto bytes = ToCodePage(WideView(&unit, 1), codePage)) {
      escaped += *bytes;
    } else {
      char digits[8];
      std::snprintf(digits, sizeof(digits), "\\U+%04X", static_cast<unsigned>(unit));
      escaped += digits;
    }
  }
  return escaped;
}

WideString NameKey(WideView name) {
  WideString key(name);
  CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
  return key;
}

}  // namespace zdm
