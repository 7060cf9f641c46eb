// The category manager: its index, the map it keeps, categories with the document's defaults.
#include "zdm/categories/CZDMCategoryMgr.h"

#include "document/CZCategoryDispAttrib.h"
#include "document/Document.h"
#include "tests/categories/CategorySupport.h"
#include "tests/support/TempFile.h"

#include <gtest/gtest.h>

#include <functional>

using namespace zdm::test;
using zdm::Document;

namespace {

ZRefPtr<IZCategory> Loose(ULONG number) {
  auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
  category->SetNumber(number);
  return category;
}

ZRefPtr<CZDMCategoryMgr> NewMgr() { return zdm::MakeObject<CZDMCategoryMgr, CZDMCategoryMgr>(); }

TEST(CategoryMgr, IndexesWithTheseOperationsOnly) {
  using M = CZDMCategoryMgr;
  LONGLONG noPlace = 0;
  const struct {
    const char* name;
    std::function<void(M&, IZCategory*)> add;
    bool indexes;
  } rows[] = {{"AddCategory", [](M& m, IZCategory* c) { m.AddCategory(c); }, true},
              {"AttachTail", [](M& m, IZCategory* c) { m.AttachTail(c); }, true},
              {"AddTail", [](M& m, IZCategory* c) { m.AddTail(c); }, false},
              {"AddHead", [](M& m, IZCategory* c) { m.AddHead(c); }, false},
              {"AttachHead", [](M& m, IZCategory* c) { m.AttachHead(c); }, false},
              {"InsertAfter", [&](M& m, IZCategory* c) { m.InsertAfter(c, &noPlace); }, true},
              {"InsertBefore", [&](M& m, IZCategory* c) { m.InsertBefore(c, &noPlace); }, true},
              {"InsertBefore that fails",
               [](M& m, IZCategory* c) {
                 m.InsertBefore(c, nullptr);
                 m.AddHead(c);
               },
               false}};
  for (const auto& row : rows) {
    auto manager = NewMgr();
    auto category = Loose(7);
    noPlace = 0;
    row.add(*manager, category);
    ASSERT_EQ(manager->GetCount(), 1) << row.name;
    EXPECT_EQ(manager->GetCategoryByNumber(7) != nullptr, row.indexes) << row.name;
    manager->AssertValid(nullptr);
    EXPECT_EQ(manager->GetCategoryByNumber(7), category.Get()) << row.name;
  }
}

TEST(CategoryMgr, KeepsTheFirstOfANumberWhileItLives) {
  auto manager = NewMgr();
  auto first = Loose(7);
  auto second = Loose(7);
  manager->AddCategory(first);
  manager->AddCategory(second);
  manager->AddCategory(nullptr);
  EXPECT_EQ(manager->GetCategoryByNumber(7), first.Get());
  manager->RemoveItem(first);
  EXPECT_EQ(manager->GetCategoryByNumber(7), first.Get());
  first.Reset();
  EXPECT_EQ(manager->GetCategoryByNumber(7), nullptr);
  manager->AssertValid(nullptr);
  EXPECT_EQ(manager->GetCategoryByNumber(7), second.Get());
}

TEST(CategoryMgr, FillsItsMapFromTheRootsInListOrder) {
  TestDatabase db;
  auto manager = NewMgr();
  auto one = NewCategory(db, 1);
  auto two = NewCategory(db, 2);
  auto three = NewCategory(db, 3);
  for (IZCategory* each : {three.Get(), two.Get(), one.Get()}) manager->AttachTail(each);
  one->AddMember(two);
  ZRefPtr<IZReltnColl> relations;
  manager->CreateCategoryReltnColl(relations.Out());
  EXPECT_EQ(relations->GetReferenceCount(), 1u);
  EXPECT_EQ(TreesOf(relations), "3 1(2)");
  two->SetCategoryVisible(false);
  manager->RebuildReltnMap();
  EXPECT_FALSE(manager->GetReltnMap().GetCategoryVisible(2));
  EXPECT_TRUE(manager->GetReltnMap().GetCategoryVisible(3));
  three->SetParentCategory(one.Get());
  one->SetParentCategory(two.Get());
  manager->RebuildReltnMap();
  EXPECT_EQ(manager->GetReltnMap().GetCategoryColl()->GetCount(), 0) << "a ring has no root";
}

TEST(CategoryMgr, AllTreesTogetherAreBounded) {
  TestDatabase db;
  auto manager = NewMgr();
  auto shared = NewCategory(db, 1);
  for (int i = 0; i < 400; ++i) shared->AddMember(db.MakeObject());  // walked, no category
  ZRefPtr<IZReltnColl> relations;
  for (LONG number = 2; number <= 4; ++number) {
    auto root = NewCategory(db, number);
    manager->AttachTail(root);
    for (int i = 0; i < 1000; ++i) root->AddMember(shared);
    const bool isTooMuch = number == 4;
    EXPECT_EQ(Thrown([&] { manager->CreateCategoryReltnColl(relations.Out()); }),
              isTooMuch ? E_FAIL : S_OK);
    EXPECT_EQ(relations == nullptr, isTooMuch);
  }
}

/// A new document and the manager of categories that it comes with.
struct House {
  House() : document(Document::Create(OLESTR("House"))) {
    manager = dynamic_cast<CZDMCategoryMgr*>(document->GetCategoryMgr());
  }

  Document document;
  ZRefPtr<CZDMCategoryMgr> manager;
};

TEST(CategoryMgr, MakesCategoriesWithTheDocumentsDefaultsOnce) {
  House house;
  const auto category = zdm::Attached(house.manager->GetOrCreateCategory(5, OLESTR("Walls")));
  ASSERT_NE(category, nullptr);
  EXPECT_EQ(category->GetReferenceCount(), 2u);
  EXPECT_EQ(category->GetFlags(), 0xDC00);
  EXPECT_EQ(category->GetNumber(), 5u);
  EXPECT_NE(category->GetMaterial(), nullptr);
  EXPECT_EQ(category->GetMaterial(), category->GetReference());
  EXPECT_TRUE(
      category->GetProjectionDispAttrib()->JudgeSame(house.document->GetDefaultDispAttrib()));
  EXPECT_NE(category->GetSectionDispAttrib(), category->GetProjectionDispAttrib());
  EXPECT_TRUE(category->IsObjectValid());
  const auto again = zdm::Attached(house.manager->GetOrCreateCategory(5, OLESTR("Doors")));
  EXPECT_EQ(again, category);
  EXPECT_EQ(house.manager->GetCount(), 1);
  zdm::Bstr name;
  house.manager->GetName(name.Out());
  EXPECT_EQ(name, zdm::Bstr(OLESTR("*ZCategoryMgr")));
  house.document.Save(TempFile("categories.zdm"));
  const auto opened = Document::Open(house.document->GetPath());
  EXPECT_NE(opened->GetCategoryMgr()->GetCategoryByNumber(5), nullptr);
}

TEST(CategoryMgr, MakesNothingWithoutTheDocumentsDefaults) {
  TestDatabase db;
  auto manager = NewMgr();
  db.Add(manager);
  EXPECT_EQ(manager->GetOrCreateCategory(5, nullptr), nullptr) << "no such model";
  House house;
  IZDMObjMgr* materials = house.document->GetMaterialMgr();
  materials->RemoveAll();
  const auto category = zdm::Attached(house.manager->GetOrCreateCategory(5, nullptr));
  ASSERT_NE(category, nullptr) << "the default material may be missing";
  EXPECT_EQ(category->GetMaterial(), nullptr);
  house.document->RemoveItem(static_cast<IZDMObject*>(materials));
  EXPECT_EQ(house.manager->GetOrCreateCategory(6, nullptr), nullptr) << "no materials";
  EXPECT_EQ(house.manager->GetCount(), 1);
}

TEST(CategoryMgr, ShowsAnObjectWithTheValuesOfACategory) {
  House house;
  IZDMObject* wall = house.document.Add(OLESTR("Wall"));
  const auto category = zdm::Attached(house.manager->GetOrCreateCategory(5, OLESTR("Walls")));
  category->SetProjectionDispAttrib(Colored(3));
  EXPECT_FALSE(house.manager->ApplyCategoryDispAttrib(6, wall));
  EXPECT_FALSE(house.manager->ApplyCategoryDispAttrib(5, nullptr));
  EXPECT_EQ(wall->GetDispAttrib(), nullptr);
  EXPECT_TRUE(house.manager->ApplyCategoryDispAttrib(5, wall));
  auto* shown = dynamic_cast<CZCategoryDispAttrib*>(wall->GetDispAttrib());
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->GetCategory(), category.Get());
  EXPECT_EQ(shown->GetValues().color, 3u);
  EXPECT_TRUE(shown->GetValues().isVisible);
  category->SetCategoryVisible(false);
  EXPECT_FALSE(shown->GetValues().isVisible);
  house.manager->RebuildReltnMap();
  auto* relation = zdm::ViewAs<IZCategoryReltn>(house.manager->GetReltnMap().GetCategoryReltn(5));
  relation->SetVisibility(zdm::kCategoryDraw, true, nullptr);
  relation->SetProjectionDispAttrib(Colored(4));
  house.manager->GetReltnMap().RefreshCategoryDispAttribToSysCategorizing();
  EXPECT_EQ(shown->GetValues().color, 4u);
  EXPECT_TRUE(shown->GetValues().isVisible);
  shown->SetEnabled(false);
  EXPECT_TRUE(shown->GetValues() == zdm::DispValues());
}

}  // namespace
