// The kind of drawing that a visibility belongs to. The values are the host's; the library passes
// them on, and itself uses the one below.
#pragma once

#include "platform/ole/ole.h"

enum eZGiDraw : LONG;

namespace zdm {
/// The kind for which the library asks and sets the visibility of a category relation.
inline constexpr eZGiDraw kCategoryDraw = static_cast<eZGiDraw>(1);
}  // namespace zdm
