// Hostile bytes as the record of a category relation with all below it. What loads can be searched,
// collected, copied and compared.
#include "fuzz/ObjectFuzz.h"
#include "tests/categories/CategorySupport.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  TestDatabase db;
  const ZRefPtr<IZCategory> categories[] = {NewCategory(db, 1), NewCategory(db, 2)};
  auto relation = ReltnTo(nullptr);
  Loads([&] { LoadBytes(*relation, bytes, &db); });
  for (const LONG number : {1, 2, 3}) {
    bool found = false;
    relation->FindCategoryVisible(number, &found);
    Require(found == (relation->FindCategoryReltn(number) != nullptr));
  }
  auto coll = NewReltns();
  relation->CollectReltns(coll);
  Require(coll->GetCount() >= 1);
  const auto copy = zdm::CloneAs<IZCategoryReltn>(relation);
  Require(copy != nullptr);
  auto copied = NewReltns();
  copy->CollectReltns(copied);
  Require(copied->GetCount() == coll->GetCount());
  IDNotes visitor;
  relation->Accept(nullptr, nullptr, &visitor);
  relation->AssertValid(nullptr);
  RequireStableIfLoaded(*relation, *ReltnTo(nullptr), db);
}
