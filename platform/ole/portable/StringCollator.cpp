#include "platform/ole/portable/StringCollator.h"

#include <unicode/uchar.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

namespace zdm {
namespace {

using View = std::basic_string_view<OLECHAR>;
using CollatorPtr = std::unique_ptr<UCollator, void (*)(UCollator*)>;

constexpr OLECHAR kFirst = 0x20;  // printable ASCII
constexpr OLECHAR kLast = 0x7E;

constexpr int kUnsettled = INT_MAX;  // no difference of places

CollatorPtr Open(const char* locale, UColAttributeValue strength) {
  UErrorCode status = U_ZERO_ERROR;
  CollatorPtr collator(ucol_open(locale, &status), &ucol_close);
  ucol_setAttribute(collator.get(), UCOL_STRENGTH, strength, &status);
  ucol_setAttribute(collator.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
  ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_OFF, &status);
  if (U_FAILURE(status)) collator.reset();
  return collator;
}

int CompareCharacters(const UCollator* collator, OLECHAR left, OLECHAR right) {
  return ucol_strcoll(collator, &left, 1, &right, 1);
}

std::basic_string<OLECHAR> Folded(View text) {
  std::basic_string<OLECHAR> folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    UChar32 point;
    U16_NEXT(text.data(), at, text.size(), point);
    point = u_foldCase(point, U_FOLD_CASE_DEFAULT);
    if (point > 0xFFFF) folded += U16_LEAD(point);
    folded += static_cast<OLECHAR>(point > 0xFFFF ? U16_TRAIL(point) : point);
  }
  return folded;
}

// Primary weights of one character, and the number of all its elements.
struct Weights {
  std::vector<int> letters;
  int elements = 0;
};

Weights WeightsOf(const UCollator* collator, OLECHAR unit) {
  Weights weights;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCollationElements, void (*)(UCollationElements*)> elements(
      ucol_openElements(collator, &unit, 1, &status), &ucol_closeElements);
  if (U_FAILURE(status)) return weights;
  for (int element = ucol_next(elements.get(), &status); element != UCOL_NULLORDER;
       element = ucol_next(elements.get(), &status)) {
    ++weights.elements;
    if (ucol_primaryOrder(element) != 0) weights.letters.push_back(ucol_primaryOrder(element));
  }
  return weights;
}

bool OneBeginsTheOther(const std::vector<int>& left, const std::vector<int>& right) {
  const std::size_t common = std::min(left.size(), right.size());
  return std::equal(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(common),
                    right.begin());
}

// Units that both begin with.
std::size_t CommonLength(View left, View right) {
  const std::size_t limit = std::min(left.size(), right.size());
  std::size_t at = 0;
  for (std::uint64_t l, r; limit - at >= 4; at += 4) {
    std::memcpy(&l, left.data() + at, sizeof(l));
    std::memcpy(&r, right.data() + at, sizeof(r));
    if (l != r && std::endian::native == std::endian::little) {
      return at + static_cast<std::size_t>(std::countr_zero(l ^ r)) / 16;
    }
    if (l != r) break;
  }
  while (at < limit && left[at] == right[at]) ++at;
  return at;
}

constexpr OLECHAR kFirstIdeograph = 0x4E00;  // common Chinese characters
constexpr OLECHAR kLastIdeograph = 0x9FFF;
constexpr std::uint32_t kNoWeight = 1;  // of a character whose weight does not fit in 32 bits

bool IsIdeograph(OLECHAR unit) { return unit >= kFirstIdeograph && unit <= kLastIdeograph; }

// Bytes of a weight that stands left-justified in 32 bits.
int WeightSize(std::uint32_t weight) { return 4 - std::countr_zero(weight) / 8; }

// Noncharacters that collation data puts before letters to name the sections of an index.
bool IsIndexMark(OLECHAR unit) { return unit == 0xFDD0 || unit == 0xFDD1; }

// An ASCII character, or none, stands at `at`, so what stands before it has no further mark.
bool EndsCharacter(View text, std::size_t at) { return at >= text.size() || text[at] < 0x80; }

}  // namespace

const StringCollator& StringCollator::ForUser() {
  static const StringCollator collator(nullptr);
  return collator;
}

StringCollator::StringCollator(const char* locale) : collator_(Open(locale, UCOL_TERTIARY)) {
  CollatorPtr letters = Open(locale, UCOL_PRIMARY);
  const CollatorPtr accents = Open(locale, UCOL_SECONDARY);
  if (collator_ == nullptr || letters == nullptr || accents == nullptr) return;
  FillPlaces(letters.get(), accents.get());
  RemoveSequences();
  letters_ = std::move(letters);
  ideographs_ =
      std::make_unique<std::atomic<std::uint32_t>[]>(kLastIdeograph - kFirstIdeograph + 1);
}

void StringCollator::FillPlaces(const UCollator* letters, const UCollator* accents) {
  std::array<OLECHAR, kLast - kFirst + 1> sorted;
  std::iota(sorted.begin(), sorted.end(), kFirst);
  std::sort(sorted.begin(), sorted.end(), [this](OLECHAR left, OLECHAR right) {
    return CompareCharacters(collator_.get(), left, right) < 0;
  });
  std::array<bool, 128> unclear{};  // by letter
  Place place{1, 1};
  Weights before = WeightsOf(collator_.get(), sorted[0]);
  places_[sorted[0]] = place;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    const Weights weights = WeightsOf(collator_.get(), sorted[i]);
    if (CompareCharacters(letters, sorted[i - 1], sorted[i]) == 0) {
      // Characters of one letter must differ by case alone, and in as many elements.
      ++place.variant;
      if (weights.elements != before.elements ||
          CompareCharacters(accents, sorted[i - 1], sorted[i]) != 0) {
        unclear[place.letter] = true;
      }
    } else {
      // Different letters must differ before either one ends.
      place = {static_cast<std::uint8_t>(place.letter + 1), 1};
      if (OneBeginsTheOther(before.letters, weights.letters)) {
        unclear[place.letter - 1U] = unclear[place.letter] = true;
      }
    }
    places_[sorted[i]] = place;
    before = weights;
  }
  for (Place& each : places_) {
    if (unclear[each.letter]) each = Place();
  }
}

void StringCollator::RemoveSequences() {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<USet, void (*)(USet*)> sequences(uset_openEmpty(), &uset_close);
  ucol_getContractionsAndExpansions(collator_.get(), sequences.get(), nullptr, true, &status);
  for (int item = 0; item < uset_getItemCount(sequences.get()); ++item) {
    UChar32 first;
    UChar32 last;
    std::array<OLECHAR, 64> units;
    const int length = uset_getItem(sequences.get(), item, &first, &last, units.data(),
                                    static_cast<int>(units.size()), &status);
    const View text(units.data(), static_cast<std::size_t>(length));
    if (length == 0 || IsIndexMark(text[0])) continue;
    // A character without marks begins a sequence only if the next character is ASCII too.
    const bool begins = length > 1 && text[1] < 0x80;
    for (std::size_t i = begins ? 0 : 1; i < text.size(); ++i) {
      if (text[i] < 0x80) places_[text[i]] = Place();
      if (IsIdeograph(text[i])) continuing_.push_back(text[i]);
    }
  }
  std::sort(continuing_.begin(), continuing_.end());
  allKnown_ = U_SUCCESS(status) != 0;
}

// Whether the unit at `at`, if any, never continues what stands before it.
bool StringCollator::BeginsAnew(View text, std::size_t at) const {
  if (at >= text.size()) return true;
  const OLECHAR unit = text[at];
  if (unit < 0x80) return places_[unit].letter != 0;
  return IsIdeograph(unit) && !std::binary_search(continuing_.begin(), continuing_.end(), unit);
}

// The order, if the first difference of letters settles it. Everything else (a character without a
// place, a mark that belongs to the characters that differ) is left to the collator.
int StringCollator::CompareByPlaces(View left, View right, std::size_t start) const {
  const std::size_t limit = std::min(left.size(), right.size());
  int variant = 0;
  for (std::size_t i = start; i < limit; ++i) {
    const OLECHAR l = left[i];
    const OLECHAR r = right[i];
    if ((l | r) >= 0x80) return kUnsettled;
    const Place leftPlace = places_[l];
    const Place rightPlace = places_[r];
    if (leftPlace.letter == 0 || rightPlace.letter == 0) return kUnsettled;
    if (leftPlace.letter != rightPlace.letter) {
      if (!EndsCharacter(left, i + 1) || !EndsCharacter(right, i + 1)) return kUnsettled;
      return int{leftPlace.letter} - int{rightPlace.letter};
    }
    if (variant == 0) variant = int{leftPlace.variant} - int{rightPlace.variant};
  }
  if (left.size() == right.size()) return variant;
  const View& longer = left.size() > right.size() ? left : right;
  const OLECHAR next = longer[limit];
  if (next >= 0x80 || places_[next].letter == 0 || !EndsCharacter(longer, limit + 1)) {
    return kUnsettled;
  }
  return left.size() < right.size() ? -1 : 1;
}

std::uint32_t StringCollator::WeightOf(OLECHAR ideograph) const {
  std::atomic<std::uint32_t>& kept = ideographs_[ideograph - kFirstIdeograph];
  std::uint32_t weight = kept.load(std::memory_order_relaxed);
  if (weight != 0) return weight;
  std::array<std::uint8_t, 16> key;
  const int size =
      ucol_getSortKey(letters_.get(), &ideograph, 1, key.data(), static_cast<int>(key.size()));
  if (size < 2 || size > 5) {  // a terminating zero included
    weight = kNoWeight;
  } else {
    for (int i = 0; i < size - 1; ++i) weight |= std::uint32_t{key[i]} << (24 - 8 * i);
  }
  kept.store(weight, std::memory_order_relaxed);
  return weight;
}

// The order, if the texts first differ in two Chinese characters that nothing follows up on.
int StringCollator::CompareIdeographs(View left, View right, std::size_t at) const {
  if (!BeginsAnew(left, at + 1) || !BeginsAnew(right, at + 1)) return kUnsettled;
  const std::uint32_t leftWeight = WeightOf(left[at]);
  const std::uint32_t rightWeight = WeightOf(right[at]);
  if (leftWeight == rightWeight || leftWeight == kNoWeight || rightWeight == kNoWeight ||
      WeightSize(leftWeight) != WeightSize(rightWeight)) {
    return kUnsettled;
  }
  return leftWeight < rightWeight ? -1 : 1;
}

int StringCollator::Compare(View left, View right) const {
  const std::size_t start = CommonLength(left, right);
  if (start == left.size() && start == right.size()) return 0;
  if (collator_ == nullptr) return left.compare(right);
  if (allKnown_ && (start == 0 || !IsIndexMark(left[start - 1]))) {
    // What both begin with counts the same for both, whatever it is, unless something continues it.
    const int order = CompareByPlaces(left, right, start);
    if (order != kUnsettled) return order;
    if (BeginsAnew(left, start) && BeginsAnew(right, start)) {
      if (start < std::min(left.size(), right.size()) && IsIdeograph(left[start]) &&
          IsIdeograph(right[start])) {
        const int weights = CompareIdeographs(left, right, start);
        if (weights != kUnsettled) return weights;
      }
      left.remove_prefix(start);
      right.remove_prefix(start);
    }
  }
  return ucol_strcoll(collator_.get(), left.data(), static_cast<int>(left.size()), right.data(),
                      static_cast<int>(right.size()));
}

int StringCollator::CompareIgnoringCase(View left, View right) const {
  return Compare(Folded(left), Folded(right));
}

}  // namespace zdm
