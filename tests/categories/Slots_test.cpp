// The order of operations of the categories' interfaces, as a caller compiled elsewhere sees it.
// IZCategory's own are in tests/model.
#include "tests/support/SlotOf.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/CZDMCategoryMgr.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(Slots, IZCategorizing) {
  ZDM_EXPECT_SLOTS(3, IZCategorizing, SetCategoryReltn, GetCategoryReltn, GetCategorizedDispAttrib,
                   GetCategorizedHatch, IsCategorizedVisible);
}

TEST(Slots, CategoryIsFollowedByTheObjectTemplate) {
  EXPECT_EQ(SlotOf(&IZCategory::SetName), 44) << "beside SetCategoryName, at 150";
  ZDM_EXPECT_SLOTS(178, CZDMCategory, CloneRelation, CloneInto, LoadExtData);
  EXPECT_EQ(SlotOf(&CZDMCategory::ReservedQuery16), 193);
}

TEST(Slots, IZCategoryReltn) {
  ZDM_EXPECT_SLOTS(66, IZCategoryReltn, GetProjectionDispAttrib, SetProjectionDispAttrib,
                   GetSectionDispAttrib, SetSectionDispAttrib, AddSubReltn, GetSubReltns,
                   GetCategoryName, GetCategory, GetCategoryNumber, FindProjectionDispAttrib,
                   FindSectionDispAttrib, FindCategoryVisible, FindCategoryReltn, GetHatchA,
                   SetHatchA, GetHatchB, SetHatchB, SetFlag02, IsFlag02, SetFlag04, IsFlag04,
                   SetLevel, GetLevel, SetFlag08, IsFlag08, JudgeSameValues, CollectReltns,
                   CopyValuesFrom, ApplyToCategory);
  EXPECT_EQ(SlotOfOverload<void(IZRelation**)>(&CZCategoryReltn::Clone), 95);
  ZDM_EXPECT_SLOTS(96, CZCategoryReltn, IsDumpRef, ReservedQuery);
  EXPECT_EQ(SlotOfOverload<void(IZSingleReltn**)>(&CZCategoryReltn::Clone), 98);
}

TEST(Slots, IZCategoryMgr) {
  ZDM_EXPECT_SLOTS(184, IZCategoryMgr, AddCategory, GetCategoryByNumber, CreateCategoryReltnColl,
                   RebuildReltnMap, ApplyCategoryDispAttrib, GetOrCreateCategory);
  EXPECT_EQ(SlotOf(&CZDMCategoryMgr::CloneRelation), 190);
  EXPECT_EQ(SlotOf(&CZDMCategoryMgr::FindSameManager), 207);
}

}  // namespace
