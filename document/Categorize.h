// Which category an object is in: that of its first valid relation to one.
#pragma once

#include "platform/system/Text.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"

class CZDocument;

namespace zdm {

/// Borrowed; null when the object is in none.
IZCategoryReltn* GetCategoryReltn(IZDMObject& object);

/// Puts `object` (of `document`) into the category of that number, in place of the one that it is
/// in. Where there is none of that number yet, it is made and called `name`. Throws CAtlException.
/// @param number  1 or more.
/// @return  borrowed.
IZCategory* SetCategory(CZDocument& document, IZDMObject& object, LONG number, WideView name);

}  // namespace zdm
