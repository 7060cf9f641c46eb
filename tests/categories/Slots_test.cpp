// The order of operations of the categories' interfaces, as a caller compiled elsewhere sees it.
// IZCategory's own are in tests/model.
#include "tests/support/SlotOf.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/CZDMCategoryMgr.h"

#include <gtest/gtest.h>

namespace {

using zdm::test::ExpectInOrder;
using zdm::test::SlotOf;

template <class Signature, class C>
int SlotOfOverload(Signature C::*operation) {
  return SlotOf(operation);
}

TEST(Slots, IZCategorizing) {
  ExpectInOrder(
      3, {ZDM_SLOT(IZCategorizing, SetCategoryReltn), ZDM_SLOT(IZCategorizing, GetCategoryReltn),
          ZDM_SLOT(IZCategorizing, GetCategorizedDispAttrib),
          ZDM_SLOT(IZCategorizing, GetCategorizedHatch),
          ZDM_SLOT(IZCategorizing, IsCategorizedVisible)});
}

TEST(Slots, NameOfACategoryHasAPlaceOfItsOwn) {
  EXPECT_EQ(SlotOf(&IZCategory::SetName), 44);
  EXPECT_EQ(SlotOf(&IZCategory::SetCategoryName), 150);
}

TEST(Slots, CategoryIsFollowedByTheObjectTemplate) {
  ExpectInOrder(178, {ZDM_SLOT(CZDMCategory, CloneRelation), ZDM_SLOT(CZDMCategory, CloneInto),
                      ZDM_SLOT(CZDMCategory, LoadExtData)});
  EXPECT_EQ(SlotOf(&CZDMCategory::ReservedQuery16), 193);
}

TEST(Slots, IZCategoryReltn) {
  using I = IZCategoryReltn;
  ExpectInOrder(66, {ZDM_SLOT(I, GetProjectionDispAttrib),
                     ZDM_SLOT(I, SetProjectionDispAttrib),
                     ZDM_SLOT(I, GetSectionDispAttrib),
                     ZDM_SLOT(I, SetSectionDispAttrib),
                     ZDM_SLOT(I, AddSubReltn),
                     ZDM_SLOT(I, GetSubReltns),
                     ZDM_SLOT(I, GetCategoryName),
                     ZDM_SLOT(I, GetCategory),
                     ZDM_SLOT(I, GetCategoryNumber),
                     ZDM_SLOT(I, FindProjectionDispAttrib),
                     ZDM_SLOT(I, FindSectionDispAttrib),
                     ZDM_SLOT(I, FindCategoryVisible),
                     ZDM_SLOT(I, FindCategoryReltn),
                     ZDM_SLOT(I, GetHatchA),
                     ZDM_SLOT(I, SetHatchA),
                     ZDM_SLOT(I, GetHatchB),
                     ZDM_SLOT(I, SetHatchB),
                     ZDM_SLOT(I, SetFlag02),
                     ZDM_SLOT(I, IsFlag02),
                     ZDM_SLOT(I, SetFlag04),
                     ZDM_SLOT(I, IsFlag04),
                     ZDM_SLOT(I, SetLevel),
                     ZDM_SLOT(I, GetLevel),
                     ZDM_SLOT(I, SetFlag08),
                     ZDM_SLOT(I, IsFlag08),
                     ZDM_SLOT(I, JudgeSameValues),
                     ZDM_SLOT(I, CollectReltns),
                     ZDM_SLOT(I, CopyValuesFrom),
                     ZDM_SLOT(I, ApplyToCategory)});
  using C = CZCategoryReltn;
  ExpectInOrder(95, {{"Clone", SlotOfOverload<void(IZRelation**)>(&C::Clone)},
                     ZDM_SLOT(C, IsDumpRef),
                     ZDM_SLOT(C, ReservedQuery),
                     {"Clone", SlotOfOverload<void(IZSingleReltn**)>(&C::Clone)}});
}

TEST(Slots, IZCategoryMgr) {
  ExpectInOrder(
      184,
      {ZDM_SLOT(IZCategoryMgr, AddCategory), ZDM_SLOT(IZCategoryMgr, GetCategoryByNumber),
       ZDM_SLOT(IZCategoryMgr, CreateCategoryReltnColl), ZDM_SLOT(IZCategoryMgr, RebuildReltnMap),
       ZDM_SLOT(IZCategoryMgr, ApplyCategoryDispAttrib),
       ZDM_SLOT(IZCategoryMgr, GetOrCreateCategory), ZDM_SLOT(CZDMCategoryMgr, CloneRelation)});
  EXPECT_EQ(SlotOf(&CZDMCategoryMgr::FindSameManager), 207);
}

}  // namespace
