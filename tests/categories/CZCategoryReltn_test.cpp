// Category relations: what they take over, copy and compare, their trees, and the stored form.
#include "tests/categories/CategorySupport.h"

#include <gtest/gtest.h>

#include <functional>

using namespace zdm::test;

namespace {

TEST(CategoryReltn, StartsVisibleValidAndDiffusible) {
  auto relation = ReltnTo(nullptr);
  EXPECT_EQ(relation->GetReltnStatus(), 0x40800000);
  EXPECT_TRUE(relation->IsVisible(zdm::kCategoryDraw, nullptr));
  EXPECT_FALSE(relation->IsFlag02() || relation->IsFlag04() || relation->IsFlag08());
  EXPECT_EQ(relation->GetLevel(), 4);
  EXPECT_NE(relation->GetProjectionDispAttrib(), nullptr);
  EXPECT_NE(relation->GetSectionDispAttrib(), relation->GetProjectionDispAttrib());
  EXPECT_EQ(relation->GetSubReltns(), nullptr);
  EXPECT_TRUE(relation->GetHatchA()->JudgeSame(ZGiHatchData()));
  EXPECT_EQ(relation->GetCategoryNumber(), 0u);
  zdm::Bstr name;
  relation->GetCategoryName(name.Out());
  EXPECT_EQ(name, zdm::Bstr(OLESTR("")));
}

TEST(CategoryReltn, TakesFlagsAndLevelOfACategoryItIsPointedAt) {
  TestDatabase db;
  const struct {
    USHORT flags;
    bool visible, flag04, flag08;
  } rows[] = {{0x0400, true, false, false},
              {0x0200, false, true, false},
              {0x0080, false, false, true},
              {0xF97F, false, false, false},
              {0x0680, true, true, true}};
  auto category = NewCategory(db, 7);
  category->SetLevel(9);
  category->SetCategoryName(OLESTR("w"));
  category->SetProjectionDispAttrib(Colored(1));
  for (const auto& row : rows) {
    category->SetFlags(row.flags);
    auto relation = ReltnTo(category);
    EXPECT_EQ(relation->IsVisible(zdm::kCategoryDraw, nullptr), row.visible) << row.flags;
    EXPECT_EQ(relation->IsFlag04(), row.flag04) << row.flags;
    EXPECT_EQ(relation->IsFlag08(), row.flag08) << row.flags;
    EXPECT_EQ(relation->GetLevel(), 9);
    EXPECT_EQ(ColorOf(relation->GetProjectionDispAttrib()), 0x00FFFFFF);
    relation->SetLevel(1);
    relation->SetReltnObj(category);
    EXPECT_EQ(relation->GetLevel(), 1) << "the target it has already";
    zdm::Bstr name;
    relation->GetCategoryName(name.Out());
    EXPECT_EQ(name, zdm::Bstr(OLESTR("w")));
    relation->SetReltnObj(db.MakeObject().Get());
    EXPECT_EQ(relation->GetLevel(), 1) << "no category";
    EXPECT_EQ(relation->GetCategory(), nullptr);
  }
}

/// A relation that differs from a new one in every value.
ZRefPtr<IZCategoryReltn> Special(IZDMObject* category) {
  auto relation = ReltnTo(category);
  relation->SetVisibility(zdm::kCategoryDraw, false, nullptr);
  relation->SetFlag02(true);
  relation->SetFlag04(true);
  relation->SetFlag08(true);
  relation->SetLevel(2);
  relation->SetReltnTag(6);
  relation->SetProjectionDispAttrib(Colored(1));
  relation->SetSectionDispAttrib(Colored(2));
  const auto hatch = Hatch(OLESTR("b"), 3);
  relation->SetHatchA(&hatch);
  return relation;
}

TEST(CategoryReltn, CopiesItsOwnValuesOverThoseOfTheCategory) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto below = NewCategory(db, 2);
  auto source = Special(category);
  source->AddSubReltn(ReltnTo(below).Get());
  source->AddSubReltn(ReltnTo(category).Get());
  auto copy = ReltnTo(below);
  copy->AddSubReltn(ReltnTo(below).Get());
  copy->CopyValuesFrom(source);
  EXPECT_TRUE(copy->JudgeSameValues(source));
  EXPECT_EQ(copy->GetReltnTag(), 6);
  EXPECT_EQ(TreeOf(copy), "1(2)");
  copy->CopyFrom(source.Get());
  EXPECT_EQ(TreeOf(copy), "1(2 2 1)");
  copy->CopyFrom(copy.Get());
  EXPECT_EQ(TreeOf(copy), "1(2 2 1)");
  copy->CopyFrom(nullptr);
  EXPECT_EQ(copy->GetReltnOID(), nullptr);
  EXPECT_EQ(copy->GetLevel(), 2);
  const auto clone = zdm::CloneAs<IZCategoryReltn>(source);
  EXPECT_EQ(BytesOf(*clone), BytesOf(*source));
  EXPECT_NE(clone->GetSubReltns()->GetHead(), source->GetSubReltns()->GetHead());
}

TEST(CategoryReltn, CopyKeepsATargetThatIsLost) {
  TestDatabase db;
  auto source = ReltnTo(NewCategory(db, 5));
  ASSERT_EQ(source->GetReltnObject(), nullptr);
  auto copy = ReltnTo(nullptr);
  copy->CopyFrom(source.Get());
  ASSERT_NE(copy->GetReltnOID(), nullptr);
  EXPECT_EQ(copy->GetReltnOID()->ID, 5);
}

TEST(CategoryReltn, SameValuesMeansEveryValueButNoTree) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto other = NewCategory(db, 2);
  using I = IZCategoryReltn;
  const auto hatch = [](const OLECHAR* pattern, double first) {
    return [=](I& r) {
      const auto data = Hatch(pattern, first);
      r.SetHatchA(&data);
    };
  };
  const struct {
    const char* name;
    std::function<void(I&)> change;
    bool same;
  } rows[] = {{"nothing", [](I&) {}, true},
              {"tag, status, tree",
               [&](I& r) {
                 r.SetReltnTag(1);
                 r.SetReltnStatus(1);
                 r.AddSubReltn(ReltnTo(other).Get());
               },
               true},
              {"visible", [](I& r) { r.SetVisibility(zdm::kCategoryDraw, true, nullptr); }, false},
              {"02", [](I& r) { r.SetFlag02(false); }, false},
              {"04", [](I& r) { r.SetFlag04(false); }, false},
              {"08", [](I& r) { r.SetFlag08(false); }, false},
              {"level", [](I& r) { r.SetLevel(3); }, false},
              {"target", [&](I& r) { r.SetReltnOID(other->GetOID()); }, false},
              {"pattern's case, 1e-6", hatch(OLESTR("B"), 3 + 1e-6), true},
              {"2e-5", hatch(OLESTR("b"), 3 + 2e-5), false},
              {"pattern", hatch(OLESTR("c"), 3), false},
              {"projection", [](I& r) { r.SetProjectionDispAttrib(Colored(9)); }, false},
              {"section", [](I& r) { r.SetSectionDispAttrib(Colored(9)); }, false}};
  auto relation = Special(category);
  for (const auto& row : rows) {
    auto changed = Special(category);
    row.change(*changed);
    EXPECT_EQ(relation->JudgeSameValues(changed), row.same) << row.name;
    EXPECT_EQ(changed->JudgeSameValues(relation), row.same) << row.name;
  }
  EXPECT_FALSE(relation->JudgeSameValues(nullptr));
}

/// 1(2(3) 4(3) 5), where the relations differ by their levels 10, 11, ... in this order.
struct Tree {
  explicit Tree(TestDatabase& db) {
    for (LONG number = 1; number <= 5; ++number) categories.push_back(NewCategory(db, number));
    for (const std::size_t index : {0, 1, 2, 3, 2, 4}) {
      reltns.push_back(ReltnTo(categories[index]));
      reltns.back()->SetLevel(static_cast<BYTE>(9 + reltns.size()));
      reltns.back()->SetProjectionDispAttrib(Colored(reltns.back()->GetLevel()));
      reltns.back()->SetSectionDispAttrib(Colored(100u + reltns.back()->GetLevel()));
    }
    reltns[0]->AddSubReltn(reltns[1].Get());
    reltns[0]->AddSubReltn(reltns[3].Get());
    reltns[0]->AddSubReltn(reltns[5].Get());
    reltns[1]->AddSubReltn(reltns[2].Get());
    reltns[3]->AddSubReltn(reltns[4].Get());
  }

  std::vector<ZRefPtr<IZCategory>> categories;
  std::vector<ZRefPtr<IZCategoryReltn>> reltns;
};

TEST(CategoryReltnTree, IsSearchedDepthFirst) {
  TestDatabase db;
  const Tree tree(db);
  IZCategoryReltn* root = tree.reltns[0];
  tree.reltns[2]->SetVisibility(zdm::kCategoryDraw, false, nullptr);
  root->AddSubReltn(RelationTo(tree.categories[3]).Get());  // of another kind: passed over
  const struct {
    LONG number;
    LONG level;  // -1: not found
    bool visible;
  } rows[] = {{1, 10, true}, {2, 11, true}, {3, 12, false}, {4, 13, true},
              {5, 15, true}, {6, -1, true}, {0, -1, true}};
  for (const auto& row : rows) {
    const bool exists = row.level >= 0;
    IZCategoryReltn* found = root->FindCategoryReltn(row.number);
    EXPECT_EQ(found != nullptr ? found->GetLevel() : -1, row.level) << row.number;
    EXPECT_EQ(ColorOf(root->FindProjectionDispAttrib(row.number)), row.level) << row.number;
    EXPECT_EQ(ColorOf(root->FindSectionDispAttrib(row.number)), exists ? 100 + row.level : -1);
    bool wasFound = !exists;
    EXPECT_EQ(root->FindCategoryVisible(row.number, &wasFound), row.visible) << row.number;
    EXPECT_EQ(wasFound, exists) << row.number;
  }
}

TEST(CategoryReltnTree, IsCollectedParentsFirstAndNeverBecomesARing) {
  TestDatabase db;
  const Tree tree(db);
  auto coll = NewReltns();
  tree.reltns[0]->CollectReltns(coll);
  std::string levels;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    levels += std::to_string(zdm::ViewAs<IZCategoryReltn>(coll->GetNext(pos))->GetLevel()) + ' ';
  }
  EXPECT_EQ(levels, "10 11 12 13 14 15 ");
  for (const std::size_t above : {0, 1, 2}) {
    tree.reltns[2]->AddSubReltn(tree.reltns[above].Get());
    EXPECT_EQ(tree.reltns[2]->GetSubReltns(), nullptr) << above;
  }
  auto root = ReltnTo(nullptr);
  root->AddSubReltn(ReltnTo(nullptr).Get());
  auto* onlyInTheTree = zdm::ViewAs<IZCategoryReltn>(root->GetSubReltns()->GetHead());
  onlyInTheTree->AddSubReltn(root.Get());
  EXPECT_EQ(onlyInTheTree->GetSubReltns(), nullptr);
}

TEST(CategoryReltnTree, OffersTargetsWithoutNamingTheRelation) {
  TestDatabase db;
  const Tree tree(db);
  tree.reltns[3]->ClearReltnStatus(ZRS_VALID);
  for (const auto& [stopAt, expected] :
       {std::pair{0, "1* 2* 3* 5* "}, std::pair{1, "1* "}, std::pair{3, "1* 2* 3* "}}) {
    OfferNotes visitor;
    visitor.stopAt = stopAt;
    EXPECT_EQ(tree.reltns[0]->Accept(nullptr, nullptr, &visitor), stopAt != 0);
    EXPECT_EQ(visitor.text, expected);
  }
}

TEST(CategoryReltnStream, IsStoredByteForByteAndComesBack) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto below = NewCategory(db, 2);
  auto relation = Special(category);
  relation->AddSubReltn(ReltnTo(below).Get());
  const auto values = [](ULONG first, ULONG second) {
    return Record().Add(BytesOf(*Colored(first))).Add(BytesOf(*Colored(second))).Bytes();
  };
  Record record;
  record.Add(ULONG{0x40800000}).Add(LONG{6}).Add(LONG{0}).Add(LONG{1});
  record.Add(BYTE{0x0E}).Add(BYTE{2}).Add(values(1, 2));
  record.AddHatch({4, 0, 0, 0, 'b', 0, 0, 0}, 3.0).AddHatch(kNullText);
  record.Add(BYTE{1}).Add(LONG{1}).Add(CZCategoryReltn::kClassID);
  record.Add(ULONG{0x40800000}).Add(LONG{-1}).Add(LONG{0}).Add(LONG{2});
  record.Add(BYTE{0x01}).Add(BYTE{4}).Add(values(0x00FFFFFF, 0x00FFFFFF));
  record.AddHatch(kNullText).AddHatch(kNullText).Add(BYTE{0});
  const std::vector<BYTE> bytes = BytesOf(*relation);
  EXPECT_EQ(bytes, record.Bytes());

  auto loaded = ReltnTo(nullptr);
  loaded->AddSubReltn(ReltnTo(category).Get());
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(TreeOf(loaded), "1(2)");
  EXPECT_TRUE(loaded->JudgeSameValues(relation));
  EXPECT_FALSE(loaded->GetHatchB()->Pattern.IsNull()) << "null reads back empty";
  EXPECT_EQ(BytesOf(*loaded), bytes);
  LoadBytes(*loaded, BytesOf(*Special(below)), &db);
  EXPECT_EQ(TreeOf(loaded), "2(2)") << "sub-relations that are not stored stay";
  auto cut = ReltnTo(nullptr);
  EXPECT_EQ(FirstCutTaken(bytes, 0, [&](const auto& piece) { LoadBytes(*cut, piece, &db); }),
            bytes.size());
}

/// Bytes of relations each below the one before, none of them with a target.
std::vector<BYTE> Nested(int depth) {
  std::vector<BYTE> bytes = BytesOf(*ReltnTo(nullptr));
  std::vector<BYTE> head = bytes;
  head.back() = 1;
  for (int i = 1; i < depth; ++i) {
    bytes = Record().Add(head).Add(LONG{1}).Add(CZCategoryReltn::kClassID).Add(bytes).Bytes();
  }
  return bytes;
}

TEST(CategoryReltnStream, IsReadToADepthOf256) {
  auto relation = ReltnTo(nullptr);
  EXPECT_EQ(Thrown([&] { LoadBytes(*relation, Nested(257)); }), S_OK);
  EXPECT_EQ(Thrown([&] { LoadBytes(*relation, Nested(258)); }), E_FAIL);
}

}  // namespace
