#include "tools/zdm/Output.h"

#include "platform/system/Text.h"
#include "tools/zdm/ExitCodes.h"
#include "tools/zdm/Terminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zdm::tool {

namespace {

struct Range {
  unsigned first;
  unsigned last;
};

// All that a terminal could act on, or that shows as nothing and moves what stands beside it.
constexpr std::array<Range, 8> kHostile = {{{0x00, 0x1F},
                                            {0x7F, 0x9F},
                                            {0x061C, 0x061C},
                                            {0x200B, 0x200F},
                                            {0x2028, 0x202E},
                                            {0x2060, 0x206F},
                                            {0xFEFF, 0xFEFF},
                                            {0xFFF9, 0xFFFB}}};

template <class Float>
Json Shortest(Float value) {
  char text[40] = {};
  std::to_chars(text, text + sizeof(text) - 1, value);
  return std::isfinite(value) ? Json(std::strtod(text, nullptr)) : Json(text);
}

bool IsHostile(unsigned unit) {
  return std::ranges::any_of(
      kHostile, [&](const Range& range) { return range.first <= unit && unit <= range.last; });
}

}  // namespace

Json Number(double value) { return Shortest(value); }

Json Number(float value) { return Shortest(value); }

std::string Escaped(std::string_view text, std::string_view layout) {
  WideString safe;
  for (const OLECHAR unit : FromUtf8(text)) {
    const bool isLayout =
        unit < 0x80 && layout.find(static_cast<char>(unit)) != std::string_view::npos;
    if (isLayout || !IsHostile(unit)) {
      safe += unit;
      continue;
    }
    char escape[8];
    std::snprintf(escape, sizeof(escape), "\\u%04x", static_cast<unsigned>(unit));
    safe.append(escape, escape + 6);
  }
  return ToUtf8(safe);
}

std::string Quoted(const std::string& text) {
  return Escaped(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
}

std::string Painted(Colour colour, const std::string& text) {
  static const bool isColoured = IsTerminal(stdout) && std::getenv("NO_COLOR") == nullptr;
  static constexpr const char* kCodes[] = {"", "2", "31", "33", "36"};
  if (!isColoured || colour == Colour::kPlain) return text;
  return std::string("\033[") + kCodes[static_cast<std::size_t>(colour)] + 'm' + text + "\033[0m";
}

void PrintLine(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
}

void PrintJson(const Json& json) {
  PrintLine(Escaped(json.dump(2, ' ', false, Json::error_handler_t::replace), "\n"));
}

void PrintError(const std::string& text) {
  std::fprintf(stderr, "zdm: %s\n", Escaped(text).c_str());
}

void FinishOutput() {
  errno = 0;
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
  throw Failure(errno == ENOSPC ? kNoRoom : kFailed, "the output could not be written");
}

}  // namespace zdm::tool
