// The map of category relations: what its indexes hold after each operation, and its stored form.
#include "zdm/categories/ZCategoryReltnMap.h"

#include "tests/categories/CategorySupport.h"
#include "tests/support/Cuts.h"

#include <gtest/gtest.h>

using namespace zdm::test;

namespace {

/// The level of the relation indexed, or -1.
template <class Key>
int LevelOf(const ZCategoryReltnMap& map, Key key) {
  auto* relation = zdm::ViewAs<IZCategoryReltn>(map.GetCategoryReltn(key));
  return relation != nullptr ? relation->GetLevel() : -1;
}

ZRefPtr<IZCategoryReltn> WithLevel(IZDMObject* category, BYTE level) {
  auto relation = ReltnTo(category);
  relation->SetLevel(level);
  return relation;
}

TEST(CategoryReltnMap, IndexesParentsFirstAndTheFirstOfAKeyStays) {
  TestDatabase db;
  auto one = NewCategory(db, 1);
  auto two = NewCategory(db, 2);
  auto twin = NewCategory(db, 3);
  twin->SetNumber(2);
  auto coll = NewReltns();
  auto root = WithLevel(one, 10);
  root->AddSubReltn(WithLevel(two, 11).Get());
  coll->AddTail(root.Get());
  coll->AddTail(WithLevel(twin, 12).Get());
  coll->AddTail(WithLevel(one, 13).Get());
  ZCategoryReltnMap map;
  map.SetCategoryColl(coll);
  EXPECT_EQ(map.GetCategoryColl(), coll.Get());
  EXPECT_EQ(LevelOf(map, one.Get()), 10);
  EXPECT_EQ(LevelOf(map, two.Get()), 11);
  EXPECT_EQ(LevelOf(map, twin.Get()), 12);
  EXPECT_EQ(LevelOf(map, 1), 10);
  EXPECT_EQ(LevelOf(map, 2), 11);
  EXPECT_EQ(LevelOf(map, 3), -1);
  EXPECT_EQ(coll->GetCount(), 3);
  map.RebuildCategoryMap(nullptr);
  map.Initialize();
  EXPECT_EQ(LevelOf(map, 1), -1);
  EXPECT_EQ(map.GetCategoryColl(), nullptr);
}

TEST(CategoryReltnMap, WhatHasNoCategoryGoesOutWithAllBelowIt) {
  TestDatabase db;
  auto one = NewCategory(db, 1);
  auto two = NewCategory(db, 2);
  auto three = NewCategory(db, 3);
  auto coll = NewReltns();
  auto first = ReltnTo(one);
  first->AddSubReltn(ReltnTo(nullptr).Get());
  first->AddSubReltn(RelationTo(two).Get());  // no category relation
  auto lost = ReltnTo(nullptr);
  lost->AddSubReltn(ReltnTo(two).Get());
  coll->AddTail(first.Get());
  coll->AddTail(lost.Get());
  coll->AddTail(ReltnTo(three).Get());
  coll->AddTail(ReltnTo(three).Get());
  ZCategoryReltnMap map;
  map.SetCategoryColl(coll);
  EXPECT_EQ(TreesOf(coll), "1() 3 3");
  EXPECT_EQ(map.GetCategoryReltn(2), nullptr);
}

TEST(CategoryReltnMap, ARingIsWalkedOnceAndOpened) {
  TestDatabase db;
  const ZRefPtr<IZCategory> categories[] = {NewCategory(db, 1), NewCategory(db, 2)};
  auto root = ReltnTo(categories[0]);
  auto below = ReltnTo(categories[1]);
  below->AddSubReltn(ReltnTo(categories[1]).Get());
  root->AddSubReltn(below.Get());
  below->GetSubReltns()->AddTail(root.Get());
  auto flat = NewReltns();
  root->CollectReltns(flat);
  EXPECT_EQ(flat->GetCount(), 3);
  EXPECT_EQ(root->FindCategoryReltn(4), nullptr);
  auto coll = NewReltns();
  coll->AddTail(root.Get());
  ZCategoryReltnMap map;
  map.SetCategoryColl(coll);
  EXPECT_EQ(TreesOf(coll), "1(2(2))");
}

TEST(CategoryReltnMap, AddRelationTakesThePlaceOfAnEarlierOne) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto twin = NewCategory(db, 2);
  auto member = NewCategory(db, 3);
  twin->SetNumber(1);
  twin->SetLevel(9);
  twin->AddMember(member);
  ZCategoryReltnMap map;
  map.AddRelation(nullptr);
  EXPECT_EQ(map.GetCategoryColl(), nullptr);
  map.AddRelation(category);
  map.AddRelation(twin);
  EXPECT_EQ(LevelOf(map, 1), 9);
  EXPECT_EQ(LevelOf(map, category.Get()), 4);
  EXPECT_EQ(TreesOf(map.GetCategoryColl()), "1 1(3)");
  EXPECT_EQ(map.GetCategoryReltn(3), nullptr);
  map.RebuildCategoryMap();
  EXPECT_EQ(LevelOf(map, 1), 4);
  EXPECT_NE(map.GetCategoryReltn(3), nullptr);
}

TEST(CategoryReltnMap, AnswersByNumber) {
  TestDatabase db;
  auto zero = NewCategory(db, 10);
  auto hidden = NewCategory(db, -5);
  zero->SetNumber(0);
  for (const auto& category : {zero, hidden}) {
    category->SetCategoryVisible(false);
    category->SetProjectionDispAttrib(Colored(1));
    category->SetSectionDispAttrib(Colored(2));
  }
  ZCategoryReltnMap map;
  EXPECT_EQ(map.FindProjectionDispAttrib(-5), nullptr);
  map.AddRelation(zero);
  map.AddRelation(hidden);
  EXPECT_TRUE(map.GetCategoryVisible(0));
  EXPECT_FALSE(map.GetCategoryVisible(-5));
  EXPECT_TRUE(map.GetCategoryVisible(6));
  EXPECT_EQ(ColorOf(map.FindProjectionDispAttrib(-5)), 1);
  EXPECT_EQ(ColorOf(map.FindSectionDispAttrib(-5)), 2);
  EXPECT_EQ(map.FindSectionDispAttrib(6), nullptr);
}

TEST(CategoryReltnMap, ForgetsWhatIsGone) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto other = NewCategory(db, 2);
  ZCategoryReltnMap map;
  map.AddRelation(category);
  map.AddRelation(other);
  IZCategory* gone = category;
  category.Reset();
  EXPECT_EQ(map.GetCategoryReltn(gone), nullptr);
  map.GetCategoryColl()->RemoveAll();
  EXPECT_EQ(map.GetCategoryReltn(other.Get()), nullptr);
  EXPECT_TRUE(map.GetCategoryVisible(1));
  map.RefreshCategoryDispAttribToSysCategorizing();
  auto coll = NewReltns();
  coll->AddTail(WithLevel(other, 8).Get());
  map.RebuildCategoryMap(coll);
  EXPECT_EQ(LevelOf(map, 2), 8) << "a place that is free again";
}

std::vector<BYTE> Saved(const ZCategoryReltnMap& map) {
  ByteStream stream;
  map.Save(&stream, nullptr);
  return stream.GetBytes();
}

TEST(CategoryReltnMap, IsStoredAsItsCollectionAndIndexedByTheRebuild) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  ZCategoryReltnMap map;
  EXPECT_EQ(Saved(map), std::vector<BYTE>{0});
  map.AddRelation(category);
  const std::vector<BYTE> bytes = Saved(map);
  EXPECT_EQ(bytes,
            Join({{1, 1, 0, 0, 0}, Raw(CZCategoryReltn::kClassID), BytesOf(*ReltnTo(category))}));

  const auto load = [&](ZCategoryReltnMap& into, std::vector<BYTE> from) {
    ByteStream stream(std::move(from));
    into.Load(&stream, &db);
  };
  ZCategoryReltnMap loaded;
  for (const int round : {1, 2}) {
    load(loaded, bytes);
    EXPECT_EQ(loaded.GetCategoryReltn(1), nullptr) << round;
    loaded.RebuildCategoryMap();
    EXPECT_EQ(LevelOf(loaded, 1), 4);
    loaded.GetCategoryColl()->AssertValid(nullptr);
    EXPECT_EQ(loaded.GetCategoryColl()->GetCount(), 1) << round;
  }
  load(loaded, {0});
  EXPECT_EQ(loaded.GetCategoryColl()->GetCount(), 1) << "nothing stored, nothing changed";
  EXPECT_EQ(loaded.GetCategoryReltn(1), nullptr);
  ExpectCutsFail(bytes, [&](const Bytes& cut) { load(loaded, cut); });
}

TEST(CategoryReltnMap, CopiesShareTheCollectionAndCopyFromClonesIt) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  ZCategoryReltnMap map;
  map.AddRelation(category);
  const ZCategoryReltnMap shared(map);
  EXPECT_EQ(shared.GetCategoryColl(), map.GetCategoryColl());
  EXPECT_EQ(shared.GetCategoryReltn(1), map.GetCategoryReltn(1));
  ZCategoryReltnMap cloned;
  cloned.CopyFrom(map);
  EXPECT_NE(cloned.GetCategoryColl(), map.GetCategoryColl());
  EXPECT_EQ(cloned.GetCategoryReltn(1), nullptr);
  cloned.RebuildCategoryMap();
  EXPECT_NE(cloned.GetCategoryReltn(1), map.GetCategoryReltn(1));
  map.CopyFrom(map);
  EXPECT_EQ(LevelOf(map, 1), 4);
  cloned.CopyFrom(ZCategoryReltnMap());
  EXPECT_EQ(cloned.GetCategoryColl(), nullptr);
}

}  // namespace
