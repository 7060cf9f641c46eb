// Dates in text, as the invariant locale reads and writes them, and what a DATE may be.
#pragma once

#include "platform/ole/portable/Variant.h"

#include <optional>
#include <string>
#include <string_view>

namespace zdm {

/// 1 January 100 to 31 December 9999, times of day included.
constexpr bool IsValidDate(DATE date) { return date > -657435.0 && date < 2958466.0; }

/// "MM/dd/yyyy HH:mm:ss", rounded to the second; without the time for a whole day, without the day
/// on 30 December 1899. Nothing for a date out of range.
std::optional<std::string> DateText(DATE date);

/// Reads a day, a time of day or both: numbers between '/', '-', ',' or spaces in the order month,
/// day, year, or another order if only that one is a date; English month and weekday names; hours,
/// minutes and seconds between ':' or '.', AM and PM. Years 0 to 49 are 2000 to 2049, 50 to 99 are
/// 1950 to 1999; a missing year is the current one in UTC. Nothing when the text is not a date.
std::optional<DATE> ParseDate(std::u16string_view text);

}  // namespace zdm
