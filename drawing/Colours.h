// The 255 numbered colours of drawings.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

constexpr LONG kByBlock = 0;
constexpr LONG kByLayer = 256;
constexpr LONG kForeground = 7;  // black on white paper

/// 0x00RRGGBB of a colour number, 1 to 255; white for others.
ULONG RgbOf(LONG number);
/// The number of the colour that is nearest.
LONG NumberOfColour(ULONG rgb);

}  // namespace zdm
