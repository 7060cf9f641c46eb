#include "zdm/categories/CZDMCategory.h"

#include "zdm/identity/ObjectOptions.h"

ZDM_OBJECT_BODY(CZDMCategory)

CZDMCategory::CZDMCategory() { ClearOptionAllowed(zdm::kReferencesCount); }
