#include "drawing/GroupReader.h"

#include <charconv>

namespace zdm {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr LONG kLowestCode = -5;
constexpr LONG kHighestCode = 1071;

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\x1A' || c == '\r'; }

}  // namespace

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

GroupReader::GroupReader(std::string_view bytes, Warnings* warnings)
    : rest_(bytes),
      lineEnd_(bytes.find('\n') != std::string_view::npos ? '\n' : '\r'),
      warnings_(warnings) {
  if (rest_.starts_with(kUtf8Mark)) rest_.remove_prefix(kUtf8Mark.size());
  const std::size_t end = rest_.find('\n');
  hasCrlf_ = end != std::string_view::npos && end != 0 && rest_[end - 1] == '\r';
}

void GroupReader::Warn(WarningCode code, ULONG line, std::string_view subject) {
  if (warnings_ != nullptr) warnings_->Add(code, line, subject);
}

bool GroupReader::NextLine(std::string_view& line) {
  if (rest_.empty()) return false;
  const std::size_t end = rest_.find(lineEnd_);
  line = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  if (lineEnd_ == '\n' && end != std::string_view::npos && line.ends_with('\r')) {
    line.remove_suffix(1);
  }
  ++line_;
  return true;
}

bool GroupReader::Next(Group& group) {
  std::string_view line;
  while (NextLine(line)) {
    const std::string_view digits = Trimmed(line);
    if (digits.empty() && rest_.find_first_not_of(" \t\r\n\x1A") == std::string_view::npos) break;
    LONG code = 0;
    const char* const end = digits.data() + digits.size();
    const auto [at, error] = std::from_chars(digits.data(), end, code);
    if (digits.empty() || error != std::errc() || at != end) {
      Warn(WarningCode::kCodeUnreadable, line_, digits);
      continue;
    }
    if (code < kLowestCode || code > kHighestCode) {
      Warn(WarningCode::kCodeOutOfRange, line_, digits);
    }
    if (!NextLine(group.text)) {
      Warn(WarningCode::kCutOff, line_, digits);
      return false;
    }
    group.code = code;
    return true;
  }
  return false;
}

}  // namespace zdm
