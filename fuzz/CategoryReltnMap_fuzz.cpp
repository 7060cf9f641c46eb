// Hostile bytes as the record of a map of category relations, which is then indexed. After a
// rebuild every relation of the trees has a category, and a second rebuild changes nothing.
#include "fuzz/ObjectFuzz.h"
#include "tests/categories/CategorySupport.h"
#include "zdm/categories/ZCategoryReltnMap.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  TestDatabase db;
  const ZRefPtr<IZCategory> categories[] = {NewCategory(db, 1), NewCategory(db, 2)};
  ZCategoryReltnMap map;
  LoadsBytes(map, bytes, &db);
  map.RebuildCategoryMap();
  const std::vector<BYTE> rebuilt = SavedBytes(map, &db);
  map.RebuildCategoryMap();
  Require(SavedBytes(map, &db) == rebuilt);
  for (const auto& category : categories) {
    auto* relation = zdm::ViewAs<IZCategoryReltn>(map.GetCategoryReltn(category.Get()));
    Require(relation == nullptr || relation->GetCategory() == category);
  }
  map.RefreshCategoryDispAttribToSysCategorizing();
  ZCategoryReltnMap copy;
  copy.CopyFrom(map);
  copy.RebuildCategoryMap();
  for (const auto& category : categories) {
    Require((copy.GetCategoryReltn(category.Get()) == nullptr) ==
            (map.GetCategoryReltn(category.Get()) == nullptr));
    zdm::ViewAs<IZCategorizing>(category)->SetCategoryReltn(nullptr);
  }
}
