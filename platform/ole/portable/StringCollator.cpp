#include "platform/ole/portable/StringCollator.h"

#include <unicode/uchar.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <numeric>
#include <string>

namespace zdm {
namespace {

using View = std::basic_string_view<OLECHAR>;
using CollatorPtr = std::unique_ptr<UCollator, void (*)(UCollator*)>;

constexpr OLECHAR kFirst = 0x20;  // printable ASCII
constexpr OLECHAR kLast = 0x7E;

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

// An ASCII character, or none, stands at `at`: what stands before it is complete.
bool EndsCharacter(View text, std::size_t at) {
  return at >= text.size() || text[at] < 0x80;
}

}  // namespace

const StringCollator& StringCollator::ForUser() {
  static const StringCollator collator(nullptr);
  return collator;
}

StringCollator::StringCollator(const char* locale) : collator_(Open(locale, UCOL_TERTIARY)) {
  const CollatorPtr letters = Open(locale, UCOL_PRIMARY);
  if (collator_ == nullptr || letters == nullptr) return;
  FillPlaces(letters.get());
  RemovePlacesOfSequences();
}

void StringCollator::FillPlaces(UCollator* letters) {
  std::array<OLECHAR, kLast - kFirst + 1> sorted;
  std::iota(sorted.begin(), sorted.end(), kFirst);
  std::sort(sorted.begin(), sorted.end(), [this](OLECHAR left, OLECHAR right) {
    return CompareCharacters(collator_.get(), left, right) < 0;
  });
  Place place;
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    if (i == 0 || CompareCharacters(letters, sorted[i - 1], sorted[i]) != 0) {
      ++place.letter;
      place.variant = 0;
    }
    ++place.variant;
    places_[sorted[i]] = place;
  }
  // Where two ASCII letters differ as accents do (v and w in some languages), they have no place.
  UErrorCode status = U_ZERO_ERROR;
  ucol_setAttribute(letters, UCOL_STRENGTH, UCOL_SECONDARY, &status);
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    Place& left = places_[sorted[i - 1]];
    Place& right = places_[sorted[i]];
    if (left.letter == right.letter && CompareCharacters(letters, sorted[i - 1], sorted[i]) != 0) {
      const std::uint8_t letter = left.letter;
      for (Place& each : places_) {
        if (each.letter == letter) each = Place();
      }
    }
  }
}

void StringCollator::RemovePlacesOfSequences() {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<USet, void (*)(USet*)> found(uset_openEmpty(), &uset_close);
  for (int kind = 0; kind < 2; ++kind) {
    uset_clear(found.get());
    ucol_getContractionsAndExpansions(collator_.get(), kind == 0 ? found.get() : nullptr,
                                      kind == 1 ? found.get() : nullptr, false, &status);
    for (int item = 0; item < uset_getItemCount(found.get()); ++item) {
      UChar32 first;
      UChar32 last;
      std::array<OLECHAR, 64> text;
      UErrorCode tooLong = U_ZERO_ERROR;
      const int length = uset_getItem(found.get(), item, &first, &last, text.data(),
                                      static_cast<int>(text.size()), &tooLong);
      if (length == 0) {
        for (UChar32 point = first; point <= std::min<UChar32>(last, kLast); ++point) {
          places_[static_cast<std::size_t>(point)] = Place();
        }
      } else if (U_SUCCESS(tooLong) && std::all_of(text.begin(), text.begin() + length,
                                                   [](OLECHAR unit) { return unit < 0x80; })) {
        for (int i = 0; i < length; ++i) places_[text[static_cast<std::size_t>(i)]] = Place();
      }
    }
  }
  if (U_FAILURE(status)) places_.fill(Place());
}

// The order by ASCII characters alone, if they settle it; what they do not settle (a character
// without a place before the first difference of letters, a mark that may belong to the
// characters that differ) is left to the collator.
std::optional<int> StringCollator::CompareByPlaces(View left, View right) const {
  const std::size_t common = std::min(left.size(), right.size());
  int variant = 0;
  for (std::size_t i = 0; i < common; ++i) {
    const OLECHAR l = left[i];
    const OLECHAR r = right[i];
    if ((l | r) >= 0x80) return std::nullopt;
    const Place leftPlace = places_[l];
    const Place rightPlace = places_[r];
    if (leftPlace.letter == 0 || rightPlace.letter == 0) return std::nullopt;
    if (leftPlace.letter != rightPlace.letter) {
      if (!EndsCharacter(left, i + 1) || !EndsCharacter(right, i + 1)) return std::nullopt;
      return int{leftPlace.letter} - int{rightPlace.letter};
    }
    if (variant == 0) variant = int{leftPlace.variant} - int{rightPlace.variant};
  }
  if (left.size() == right.size()) return variant;
  const View& longer = left.size() > right.size() ? left : right;
  const OLECHAR next = longer[common];
  if (next >= 0x80 || places_[next].letter == 0 || !EndsCharacter(longer, common + 1)) {
    return std::nullopt;
  }
  return left.size() < right.size() ? -1 : 1;
}

int StringCollator::Compare(View left, View right) const {
  if (collator_ == nullptr) return left.compare(right);
  if (const std::optional<int> settled = CompareByPlaces(left, right)) return *settled;
  return ucol_strcoll(collator_.get(), left.data(), static_cast<int>(left.size()), right.data(),
                      static_cast<int>(right.size()));
}

int StringCollator::CompareIgnoringCase(View left, View right) const {
  return Compare(Folded(left), Folded(right));
}

}  // namespace zdm
