// Numbers of groups between their text and their value, whatever the locale.
#pragma once

#include "platform/ole/ole.h"

#include <optional>
#include <string>
#include <string_view>

namespace zdm {

/// A real number; a comma counts as a point.
/// @param comma  set when there is one; may be null.
std::optional<double> ParseReal(std::string_view text, bool* comma = nullptr);
std::optional<LONG> ParseLong(std::string_view text);
/// A handle: hexadecimal, not 0.
std::optional<ULONGLONG> ParseHandle(std::string_view text);

/// The shortest text that reads back as the same number, with a point.
std::string RealText(double value);
std::string HandleText(ULONGLONG handle);

}  // namespace zdm
