// The category of a document: see IZCategoryImpl. What it refers to may be deleted, and neither
// deduction nor self-containment goes through it.
#pragma once

#include "zdm/categories/IZCategoryImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMCategory : public IZCategoryImpl {
  ZDM_OBJECT(CZDMCategory)
 public:
  CZDMCategory();
};
