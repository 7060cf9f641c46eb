// Hostile bytes as the record of three categories, which may name each other and themselves as
// members and parents. Their relation trees end, and the map of them answers.
#include "fuzz/ObjectFuzz.h"
#include "tests/categories/CategorySupport.h"
#include "zdm/categories/ZCategoryReltnMap.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  TestDatabase db;
  const ZRefPtr<IZCategory> categories[] = {NewCategory(db, 1), NewCategory(db, 2),
                                            NewCategory(db, 3)};
  ZCategoryReltnMap map;
  for (const auto& category : categories) {
    Loads([&] { LoadBytes(*category, bytes, &db); });
  }
  for (const auto& category : categories) {
    Loads([&] { map.AddRelation(category); });
  }
  const LONG count = map.GetCategoryColl() != nullptr ? map.GetCategoryColl()->GetCount() : 0;
  map.RebuildCategoryMap();
  if (count != 0) Require(map.GetCategoryColl()->GetCount() == count);
  map.GetCategoryVisible(static_cast<LONG>(categories[0]->GetNumber()));
  map.RefreshCategoryDispAttribToSysCategorizing();
  IDNotes visitor;
  categories[0]->VisitReferences(categories[0], &visitor);

  auto again = zdm::MakeObject<IZCategory, CZDMCategory>();
  again->SetID(categories[0]->GetID());
  again->SetOwner(&db);
  again->SetObjectValid(true);
  RequireStableIfLoaded(*categories[0], *again, db);
  for (const auto& category : categories)
    zdm::ViewAs<IZCategorizing>(category)->SetCategoryReltn(nullptr);
}
