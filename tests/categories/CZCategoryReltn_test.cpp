// Category relations: what they take over, copy and compare, their trees, and the stored form.
#include "tests/categories/CategorySupport.h"
#include "tests/support/Cuts.h"

#include <gtest/gtest.h>

#include <functional>

using namespace zdm::test;

namespace {

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
    zdm::Bstr name;
    relation->GetCategoryName(name.Out());
    EXPECT_EQ(name, zdm::Bstr(OLESTR("w")));
    relation->SetLevel(1);
    relation->SetReltnObj(category);
    EXPECT_EQ(relation->GetLevel(), 1) << "the target it has already";
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
    return [data = Hatch(pattern, first)](I& r) { r.SetHatchA(&data); };
  };
  const struct {
    const char* name;
    std::function<void(I&)> change;
    bool same;
  } rows[] = {{"nothing", [](I&) {}, true},
              {"tag", [](I& r) { r.SetReltnTag(1); }, true},
              {"status", [](I& r) { r.SetReltnStatus(1); }, true},
              {"tree", [&](I& r) { r.AddSubReltn(ReltnTo(other).Get()); }, true},
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
       {std::pair{0, "*1 *2 *3 *5 "}, std::pair{1, "*1 "}, std::pair{3, "*1 *2 *3 "}}) {
    IDNotes visitor(stopAt);
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
    return Join({BytesOf(*Colored(first)), BytesOf(*Colored(second))});
  };
  const std::vector<BYTE> bytes = BytesOf(*relation);
  EXPECT_EQ(bytes, Join({Hex("00008040 06000000 00000000 01000000 0E 02"),
                         values(1, 2),
                         Hex("0400000062000000 0000000000000840 0000000000000000 000000000000F03F"),
                         kNoHatch,
                         Hex("01 01000000"),
                         Raw(CZCategoryReltn::kClassID),
                         Hex("00008040 FFFFFFFF 00000000 02000000 01 04"),
                         values(0x00FFFFFF, 0x00FFFFFF),
                         kNoHatch,
                         kNoHatch,
                         {0}}));

  auto loaded = ReltnTo(nullptr);
  loaded->AddSubReltn(ReltnTo(category).Get());
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(TreeOf(loaded), "1(2)");
  EXPECT_TRUE(loaded->JudgeSameValues(relation));
  EXPECT_FALSE(loaded->GetHatchB()->Pattern.IsNull()) << "null reads back empty";
  EXPECT_EQ(BytesOf(*loaded), bytes);
  LoadBytes(*loaded, BytesOf(*Special(below)), &db);
  EXPECT_EQ(TreeOf(loaded), "2(2)") << "sub-relations that are not stored stay";
  ExpectCutsFail(bytes, [&](const Bytes& cut) { LoadBytes(*ReltnTo(nullptr), cut, &db); });
}

/// Bytes of relations each below the one before, none of them with a target.
std::vector<BYTE> Nested(int depth) {
  std::vector<BYTE> bytes = BytesOf(*ReltnTo(nullptr));
  std::vector<BYTE> head = bytes;
  head.back() = 1;
  for (int i = 1; i < depth; ++i) {
    bytes = Join({head, {1, 0, 0, 0}, Raw(CZCategoryReltn::kClassID), bytes});
  }
  return bytes;
}

TEST(CategoryReltnStream, IsReadToADepthOf256) {
  auto relation = ReltnTo(nullptr);
  EXPECT_EQ(Thrown([&] { LoadBytes(*relation, Nested(257)); }), S_OK);
  EXPECT_EQ(Thrown([&] { LoadBytes(*relation, Nested(258)); }), E_FAIL);
}

}  // namespace
