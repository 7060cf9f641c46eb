#include "platform/ole/portable/VariantDate.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace zdm {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero = std::chrono::year{1899} / 12 / 30;
constexpr int kSecondsPerDay = 86400;
constexpr int kLastDay = 2958465;  // 31 December 9999

std::optional<int> WholeDays(int year, int month, int day) {
  constexpr int kCentury = 100;
  constexpr int kPivot = 50;
  if (year < kCentury) year += year < kPivot ? 2000 : 1900;
  if (year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const year_month_day date{std::chrono::year{year},
                            std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return std::nullopt;
  return (sys_days{date} - kDayZero).count();
}

int CurrentYear() {
  const auto today = std::chrono::floor<days>(std::chrono::system_clock::now());
  return static_cast<int>(year_month_day{today}.year());
}

constexpr std::array<std::u16string_view, 12> kMonths = {
    u"january", u"february", u"march",     u"april",   u"may",      u"june",
    u"july",    u"august",   u"september", u"october", u"november", u"december"};
constexpr std::array<std::u16string_view, 7> kWeekdays = {
    u"sunday", u"monday", u"tuesday", u"wednesday", u"thursday", u"friday", u"saturday"};

/// Position of a name, given whole or by its first three letters; -1 if none.
template <std::size_t N>
int Find(const std::array<std::u16string_view, N>& names, std::u16string_view word) {
  constexpr std::size_t kShort = 3;
  for (std::size_t i = 0; i < N; ++i) {
    if (word == names[i] || word == names[i].substr(0, kShort)) return static_cast<int>(i);
  }
  return -1;
}

/// A text as numbers, lower-case words and separators; the text is walked once.
struct Token {
  enum Kind { kNumber, kWord, kSeparator } kind;
  int number = 0;          // kNumber
  std::u16string word;     // kWord
  char16_t separator = 0;  // kSeparator
};

std::optional<std::vector<Token>> Split(std::u16string_view text) {
  constexpr std::size_t kMaxTokens = 32;
  std::vector<Token> tokens;
  bool joined = false;  // whether the last token may grow
  for (const char16_t unit : text) {
    if (unit == u' ' || unit == u'\t') {
      joined = false;
      continue;
    }
    Token token{};
    const auto lower = static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
    if (unit >= u'0' && unit <= u'9') {
      token.kind = Token::kNumber;
      token.number = unit - u'0';
    } else if (lower >= u'a' && lower <= u'z') {
      token.kind = Token::kWord;
      token.word = lower;
    } else if (std::u16string_view(u"/-,:.").find(unit) != std::u16string_view::npos) {
      token.kind = Token::kSeparator;
      token.separator = unit;
    } else {
      return std::nullopt;
    }
    if (joined && token.kind != Token::kSeparator && token.kind == tokens.back().kind) {
      Token& last = tokens.back();
      last.number = last.number * 10 + token.number;
      last.word += token.word;
      if (last.number > 99999) return std::nullopt;
    } else {
      if (tokens.size() == kMaxTokens) return std::nullopt;
      tokens.push_back(std::move(token));
    }
    joined = true;
  }
  return tokens;
}

class DateParser {
 public:
  explicit DateParser(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

  std::optional<DATE> Parse() {
    while (at_ < tokens_.size()) {
      if (!(IsTime() ? TakeTime() : TakeDay())) return std::nullopt;
    }
    if (!hasTime_ && numbers_.empty()) return std::nullopt;
    const std::optional<int> day = Day();
    if (!day) return std::nullopt;
    const double fraction = static_cast<double>(seconds_) / kSecondsPerDay;
    const DATE date = *day < 0 ? *day - fraction : *day + fraction;
    if (!IsValidDate(date)) return std::nullopt;
    return date;
  }

 private:
  bool Is(std::size_t at, Token::Kind kind) const {
    return at < tokens_.size() && tokens_[at].kind == kind;
  }
  bool IsTimeSeparator(std::size_t at) const {
    return Is(at, Token::kSeparator) &&
           (tokens_[at].separator == u':' || tokens_[at].separator == u'.');
  }
  /// 0 for none, 'a' or 'p'.
  char16_t HalfOfDay(std::size_t at) const {
    if (!Is(at, Token::kWord)) return 0;
    const std::u16string& word = tokens_[at].word;
    return word == u"a" || word == u"am" || word == u"p" || word == u"pm" ? word[0] : u'\0';
  }

  bool IsTime() const {
    return Is(at_, Token::kNumber) && (IsTimeSeparator(at_ + 1) || HalfOfDay(at_ + 1) != 0);
  }

  bool TakeTime() {
    if (hasTime_) return false;
    hasTime_ = true;
    int parts[3] = {tokens_[at_++].number, 0, 0};
    for (int i = 1; i < 3 && IsTimeSeparator(at_); ++i) {
      if (!Is(at_ + 1, Token::kNumber)) return false;
      parts[i] = tokens_[at_ + 1].number;
      at_ += 2;
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
    if (const char16_t half = HalfOfDay(at_); half != 0) {
      ++at_;
      if (half == u'p' && parts[0] < 12) parts[0] += 12;
      if (half == u'a' && parts[0] == 12) parts[0] = 0;
    }
    seconds_ = (parts[0] * 60 + parts[1]) * 60 + parts[2];
    return true;
  }

  /// A number, a name, or one separator between two of them.
  bool TakeDay() {
    const Token& token = tokens_[at_++];
    if (token.kind == Token::kNumber) {
      if (numbers_.size() == 3) return false;
      numbers_.push_back(token.number);
    } else if (token.kind == Token::kWord) {
      const int month = Find(kMonths, token.word);
      if (month >= 0 && month_ == 0) {
        month_ = month + 1;
      } else if (Find(kWeekdays, token.word) < 0) {
        return false;
      }
    } else {
      const bool between = at_ >= 2 && tokens_[at_ - 2].kind != Token::kSeparator;
      const bool followed = Is(at_, Token::kNumber) || Is(at_, Token::kWord);
      return between && followed && token.separator != u':' && token.separator != u'.';
    }
    return true;
  }

  std::optional<int> Day() const {
    if (numbers_.empty()) return month_ == 0 ? std::optional(0) : std::nullopt;
    std::vector<std::optional<int>> readings;
    const int a = numbers_[0];
    const int b = numbers_.size() > 1 ? numbers_[1] : 0;
    const int c = numbers_.size() > 2 ? numbers_[2] : 0;
    if (month_ != 0) {
      if (numbers_.size() > 2) return std::nullopt;
      readings = numbers_.size() == 1
                     ? std::vector{WholeDays(CurrentYear(), month_, a), WholeDays(a, month_, 1)}
                     : std::vector{WholeDays(b, month_, a), WholeDays(a, month_, b)};
    } else if (numbers_.size() == 3) {
      readings = {WholeDays(c, a, b), WholeDays(c, b, a), WholeDays(a, b, c), WholeDays(a, c, b)};
    } else if (numbers_.size() == 2) {
      readings = {WholeDays(CurrentYear(), a, b), WholeDays(CurrentYear(), b, a),
                  WholeDays(b, a, 1), WholeDays(a, b, 1)};
    }
    for (const std::optional<int>& reading : readings) {
      if (reading) return reading;
    }
    return std::nullopt;
  }

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  std::vector<int> numbers_;  // of the day, in the order read
  int month_ = 0;             // by name; 0 for none
  bool hasTime_ = false;
  int seconds_ = 0;
};

}  // namespace

std::optional<std::string> DateText(DATE date) {
  if (!IsValidDate(date)) return std::nullopt;
  const double whole = std::trunc(date);
  const double fraction = std::fabs(date - whole);
  auto day = static_cast<int>(whole);
  auto seconds = static_cast<int>(std::lround(fraction * kSecondsPerDay));
  if (seconds == kSecondsPerDay && day < kLastDay) {
    seconds = 0;
    ++day;
  } else if (seconds == kSecondsPerDay) {
    --seconds;  // there is no day after the last
  }
  char text[40];
  std::string result;
  if (whole != 0) {
    const year_month_day civil{kDayZero + days{day}};
    std::snprintf(text, sizeof text, "%02u/%02u/%04d", static_cast<unsigned>(civil.month()),
                  static_cast<unsigned>(civil.day()), static_cast<int>(civil.year()));
    result = text;
  }
  if (whole == 0 || fraction != 0) {
    std::snprintf(text, sizeof text, "%s%02d:%02d:%02d", result.empty() ? "" : " ", seconds / 3600,
                  seconds / 60 % 60, seconds % 60);
    result += text;
  }
  return result;
}

std::optional<DATE> ParseDate(std::u16string_view text) {
  std::optional<std::vector<Token>> tokens = Split(text);
  if (!tokens) return std::nullopt;
  return DateParser(std::move(*tokens)).Parse();
}

}  // namespace zdm
