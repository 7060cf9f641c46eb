// Categories and category relations in words, as parts of what Describe.h tells of an object.
#pragma once

#include "tools/zdm/Output.h"

struct IZCategory;
struct IZCategoryReltn;

namespace zdm::tool {

/// Number, parent and members by ID, visibility, level. A parent that is gone is null.
Json CategoryFields(IZCategory& category);

/// Every value of a relation beside that of its category: `field`, `own`, `category`, which is null
/// where the category has none.
Json CategoryReltnValues(IZCategoryReltn& relation);

}  // namespace zdm::tool
