#include "drawing/Warnings.h"

#include <algorithm>

namespace zdm {

namespace {

constexpr std::size_t kLongestSubject = 80;

// By WarningCode.
constexpr std::array<const char*, kWarningCodes> kNames = {
    "code-unreadable", "code-out-of-range", "cut-off",        "no-end",
    "after-end",       "section-unclosed",  "table-unclosed", "block-unclosed",
    "outside-section", "codepage-unknown",  "text-long",      "decimal-comma",
    "number-bad",      "layer-undefined",   "block-missing",  "block-doubled",
    "block-cycle",     "paths-too-many",    "handle-doubled", "handle-unresolved",
    "block-differs",   "version-differs",   "section-kept"};

}  // namespace

const char* NameOf(WarningCode code) { return kNames[static_cast<std::size_t>(code)]; }

void Warnings::Add(WarningCode code, ULONG line, std::string_view subject) {
  Warning& warning = byCode_[static_cast<std::size_t>(code)];
  if (warning.count++ != 0) return;
  warning.code = code;
  warning.line = line;
  warning.subject = subject.substr(0, kLongestSubject);
}

std::vector<Warning> Warnings::All() const {
  std::vector<Warning> all;
  std::ranges::copy_if(byCode_, std::back_inserter(all),
                       [](const Warning& one) { return one.count != 0; });
  return all;
}

}  // namespace zdm
