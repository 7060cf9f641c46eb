// The user's collation order, with short ways where printable ASCII or common Chinese characters
// decide. It tells apart what differs by letter, accent or case (tertiary strength), counts
// punctuation and spaces, and takes digits one by one, in whatever locale. From any thread.
#pragma once

#include "platform/ole/portable/Types.h"

#include <unicode/ucol.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace zdm {

class StringCollator {
 public:
  /// The collator of the default locale, made at the first call and kept.
  static const StringCollator& ForUser();

  /// Without a collator (no locale data) texts are compared code unit by code unit.
  explicit StringCollator(const char* locale);

  /// Negative, 0 or positive.
  int Compare(std::basic_string_view<OLECHAR> left, std::basic_string_view<OLECHAR> right) const;
  /// The same after folding case, character by character. Throws std::bad_alloc.
  int CompareIgnoringCase(std::basic_string_view<OLECHAR> left,
                          std::basic_string_view<OLECHAR> right) const;

 private:
  // Place of a printable ASCII character among the others. Characters that may count otherwise next
  // to another ASCII character or after any character ("ch" in some languages) have none.
  struct Place {
    std::uint8_t letter = 0;   // equal for characters that differ in case only; 0: no place
    std::uint8_t variant = 0;  // order among those
  };

  void FillPlaces(const UCollator* letters, const UCollator* accents);
  void RemoveSequences();
  bool BeginsAnew(std::basic_string_view<OLECHAR> text, std::size_t at) const;
  int CompareByPlaces(std::basic_string_view<OLECHAR> left, std::basic_string_view<OLECHAR> right,
                      std::size_t start) const;

  // Primary weight of a Chinese character, worked out when it is first asked for.
  std::uint32_t WeightOf(OLECHAR ideograph) const;
  int CompareIdeographs(std::basic_string_view<OLECHAR> left, std::basic_string_view<OLECHAR> right,
                        std::size_t at) const;

  using CollatorPtr = std::unique_ptr<UCollator, void (*)(UCollator*)>;

  CollatorPtr collator_;
  CollatorPtr letters_{nullptr, nullptr};  // the same at primary strength
  std::array<Place, 128> places_{};
  std::unique_ptr<std::atomic<std::uint32_t>[]> ideographs_;  // 0: not yet asked for
  std::vector<OLECHAR> continuing_;  // Chinese characters that continue a sequence, ascending
  bool allKnown_ = false;            // the two above are complete
};

}  // namespace zdm
