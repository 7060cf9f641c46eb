#include "drawing/ShownText.h"

namespace zdm {

namespace {

constexpr OLECHAR kDegreeSign = 0xB0;
constexpr OLECHAR kPlusMinus = 0xB1;
constexpr OLECHAR kDiameter = 0x2300;

bool IsDigit(OLECHAR unit) { return unit >= '0' && unit <= '9'; }

/// What follows the two percent signs; moves `at` past it.
void AppendSpecial(WideView text, std::size_t* at, WideString* shown) {
  const OLECHAR kind = *at < text.size() ? text[*at] : OLECHAR(0);
  if (IsDigit(kind) && *at + 3 <= text.size() && IsDigit(text[*at + 1]) && IsDigit(text[*at + 2])) {
    const int code = (kind - '0') * 100 + (text[*at + 1] - '0') * 10 + (text[*at + 2] - '0');
    if (code != 0) *shown += static_cast<OLECHAR>(code);
    *at += 3;
    return;
  }
  ++*at;
  switch (kind) {
    case 'd':
    case 'D':
      *shown += kDegreeSign;
      break;
    case 'p':
    case 'P':
      *shown += kPlusMinus;
      break;
    case 'c':
    case 'C':
      *shown += kDiameter;
      break;
    case '%':
      *shown += '%';
      break;
    default:
      break;
  }
}

/// What follows a backslash; moves `at` past it.
void AppendCommand(WideView text, std::size_t* at, std::vector<WideString>* lines) {
  const OLECHAR kind = text[(*at)++];
  switch (kind) {
    case 'P':
      lines->emplace_back();
      return;
    case '~':
      lines->back() += ' ';
      return;
    case '\\':
    case '{':
    case '}':
      lines->back() += kind;
      return;
    case 'L':
    case 'l':
    case 'O':
    case 'o':
    case 'K':
    case 'k':
      return;
    default:
      break;
  }
  const std::size_t end = text.find(';', *at);
  if (end == WideView::npos) return;
  if (kind == 'S') {
    for (const OLECHAR unit : text.substr(*at, end - *at)) {
      lines->back() += unit == '#' || unit == '^' ? OLECHAR('/') : unit;
    }
  }
  *at = end + 1;
}

/// A word that is longer than a line stays whole.
void AppendBroken(const WideString& line, std::size_t letters, std::vector<WideString>* out) {
  WideView rest = line;
  while (letters != 0 && rest.size() > letters) {
    std::size_t end = rest.rfind(' ', letters);
    if (end == WideView::npos) end = rest.find(' ', letters);
    if (end == WideView::npos) break;
    out->emplace_back(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
  out->emplace_back(rest);
}

}  // namespace

WideString ShownLine(WideView text) {
  WideString shown;
  for (std::size_t at = 0; at < text.size();) {
    if (text.substr(at).starts_with(OLESTR("%%"))) {
      at += 2;
      AppendSpecial(text, &at, &shown);
    } else {
      shown += text[at++];
    }
  }
  return shown;
}

std::vector<WideString> ShownParagraph(WideView text, std::size_t letters) {
  std::vector<WideString> lines(1);
  for (std::size_t at = 0; at < text.size();) {
    const OLECHAR unit = text[at++];
    if (unit == '\\' && at < text.size()) {
      AppendCommand(text, &at, &lines);
    } else if (unit != '{' && unit != '}') {
      lines.back() += unit;
    }
  }
  std::vector<WideString> shown;
  for (const WideString& line : lines) AppendBroken(ShownLine(line), letters, &shown);
  return shown;
}

}  // namespace zdm
