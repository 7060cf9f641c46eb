// Hostile bytes as the record of a map of category relations, which is then indexed. After a
// rebuild every relation of the trees has a category, and a second rebuild changes nothing.
#include "fuzz/ObjectFuzz.h"
#include "tests/categories/CategorySupport.h"
#include "zdm/categories/ZCategoryReltnMap.h"

using namespace zdm::test;

namespace {

std::vector<BYTE> Saved(const ZCategoryReltnMap& map, TestDatabase& db) {
  ByteStream stream;
  map.Save(&stream, &db);
  return stream.GetBytes();
}

}  // namespace

ZDM_FUZZ(bytes) {
  TestDatabase db;
  const ZRefPtr<IZCategory> categories[] = {NewCategory(db, 1), NewCategory(db, 2)};
  ZCategoryReltnMap map;
  ByteStream stream(bytes);
  Loads([&] { map.Load(&stream, &db); });
  map.RebuildCategoryMap();
  const std::vector<BYTE> rebuilt = Saved(map, db);
  map.RebuildCategoryMap();
  Require(Saved(map, db) == rebuilt);
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
