#include "drawing/GroupCodes.h"

#include <algorithm>

namespace zdm {

namespace {

struct Range {
  LONG first;
  LONG last;
  GroupType type;
};

constexpr Range kRanges[] = {
    {5, 5, GroupType::kHandle},        {10, 59, GroupType::kReal},
    {60, 79, GroupType::kInteger},     {90, 99, GroupType::kInteger},
    {105, 105, GroupType::kHandle},    {110, 149, GroupType::kReal},
    {170, 179, GroupType::kInteger},   {210, 239, GroupType::kReal},
    {270, 289, GroupType::kInteger},   {290, 299, GroupType::kFlag},
    {310, 319, GroupType::kBytes},     {320, 369, GroupType::kHandle},
    {370, 389, GroupType::kInteger},   {390, 399, GroupType::kHandle},
    {400, 409, GroupType::kInteger},   {420, 429, GroupType::kInteger},
    {440, 459, GroupType::kInteger},   {460, 469, GroupType::kReal},
    {480, 481, GroupType::kHandle},    {1004, 1004, GroupType::kBytes},
    {1005, 1005, GroupType::kHandle},  {1010, 1059, GroupType::kReal},
    {1060, 1071, GroupType::kInteger},
};

bool IsIn(LONG code, LONG first, LONG last) { return code >= first && code <= last; }

bool BeginsWith(std::string_view name, std::string_view lower) {
  return name.size() >= lower.size() &&
         std::ranges::equal(name.substr(0, lower.size()), lower, [](char left, char right) {
           return (left >= 'A' && left <= 'Z' ? left - 'A' + 'a' : left) == right;
         });
}

}  // namespace

GroupType TypeOf(LONG code) {
  const auto* const found = std::ranges::find_if(
      kRanges, [&](const Range& range) { return IsIn(code, range.first, range.last); });
  return found != std::end(kRanges) ? found->type : GroupType::kText;
}

HandleKind HandleKindOf(LONG code) {
  if (IsIn(code, 330, 339) || IsIn(code, 350, 359) || code == 1005) return HandleKind::kSoft;
  if (IsIn(code, 340, 349) || IsIn(code, 360, 369) || IsIn(code, 390, 399) ||
      IsIn(code, 480, 481)) {
    return HandleKind::kHard;
  }
  return HandleKind::kNone;
}

bool IsEntityPart(std::string_view type) {
  return type == "VERTEX" || type == "SEQEND" || type == "ATTRIB";
}

bool IsDictionary(std::string_view type) {
  return type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT";
}

bool RefersToBlock(std::string_view type) { return ShowsBlock(type) || type == "BLOCK_RECORD"; }

bool ShowsBlock(std::string_view type) { return type == "INSERT" || type == "DIMENSION"; }

bool IsModelSpace(std::string_view name) {
  return BeginsWith(name, "*model_space") || BeginsWith(name, "$model_space");
}

bool IsPaperSpace(std::string_view name) {
  return BeginsWith(name, "*paper_space") || BeginsWith(name, "$paper_space");
}

bool IsAnonymous(std::string_view name) {
  return name.starts_with('*') && !IsModelSpace(name) && !IsPaperSpace(name);
}

}  // namespace zdm
