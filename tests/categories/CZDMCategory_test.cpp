// Categories: flags, members, relation trees and their bounds, copies, and the stored form.
#include "document/CZDMMaterial.h"
#include "tests/categories/CategorySupport.h"
#include "tests/support/Cuts.h"
#include "tests/support/Flags.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/model/IZDMObjColl.h"

#include <gtest/gtest.h>

#include <utility>

using namespace zdm::test;

namespace {

TEST(Category, EachFlagIsABitOfItsOwn) {
  using I = IZCategory;
  auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
  ExpectFlagsApart<I>(*category,
                      {{0x8000, &I::IsFlag8000, &I::SetFlag8000},
                       {0x2000, &I::IsFlag2000, &I::SetFlag2000},
                       {0x1000, &I::IsFlag1000, &I::SetFlag1000},
                       {0x0800, &I::IsFlag0800, &I::SetFlag0800},
                       {0x0400, &I::IsCategoryVisible, &I::SetCategoryVisible},
                       {0x0200, &I::IsFlag0200, &I::SetFlag0200},
                       {0x0100, &I::IsFlag0100, &I::SetFlag0100},
                       {0x0080, &I::IsFlag0080, &I::SetFlag0080}},
                      [&] { return category->GetFlags(); });
  category->SetFlags(0);
  EXPECT_FALSE(category->IsFlag4000());
  category->SetFlag4000();
  EXPECT_EQ(category->GetFlags(), 0x4000);
}

TEST(Category, HasOneNameHoweverItIsSet) {
  auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
  zdm::Bstr name;
  static_cast<IZDisplay*>(category.Get())->SetName(OLESTR("wall"));
  category->GetDisplayName(name.Out());
  EXPECT_EQ(name, zdm::Bstr(OLESTR("wall")));
  category->SetCategoryName(nullptr);
  category->GetName(name.Out());
  EXPECT_TRUE(name.IsNull());
}

TEST(Category, MembersAreListedAndKnowTheirParent) {
  TestDatabase db;
  auto k = NewCategory(db, 1);
  auto a = NewCategory(db, 2);
  auto b = NewCategory(db, 3);
  for (IZDMObject* member : {a.Get(), b.Get(), a.Get()}) k->AddMember(member);
  k->AddMember(nullptr);
  const ZRefPtr<IZDMObjColl> members = k->GetMembers();
  ASSERT_NE(members, nullptr);
  EXPECT_EQ(members->GetReferenceCount(), 1u);
  EXPECT_EQ(members->GetTail(), a.Get());
  EXPECT_EQ(members->GetCount(), 3);
  EXPECT_EQ(a->GetParentCategory(), k.Get());
  EXPECT_EQ(b->GetParentCategory(), k.Get());
  b->SetParentCategory(nullptr);
  EXPECT_EQ(b->GetParentCategory(), nullptr);
  k->SetMemberColl(a.Get());
  EXPECT_EQ(k->GetMemberColl(), nullptr) << "an object that is no collection";
}

TEST(CategoryTree, MirrorsTheMembersWithTheValuesOfEach) {
  TestDatabase db;
  auto k = NewCategory(db, 1);
  auto a = NewCategory(db, 2);
  auto b = NewCategory(db, 3);
  auto c = NewCategory(db, 4);
  k->AddMember(a);
  k->AddMember(b);
  k->AddMember(db.MakeObject());  // no category: left out
  a->AddMember(c);
  c->SetFlags(0x0280);
  c->SetLevel(9);
  c->SetSectionDispAttrib(Colored(5));
  const auto hatch = Hatch(OLESTR("brick"), 2);
  c->SetHatchA(&hatch);
  const ZRefPtr<IZCategoryReltn> tree = k->CreateCategoryReltn();
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->GetReferenceCount(), 1u);
  EXPECT_EQ(TreeOf(tree), "1(2(4) 3)");
  IZCategoryReltn* leaf = tree->FindCategoryReltn(4);
  ASSERT_NE(leaf, nullptr);
  EXPECT_TRUE(leaf->IsFlag08());
  EXPECT_EQ(leaf->GetLevel(), 9);
  EXPECT_EQ(ColorOf(leaf->GetSectionDispAttrib()), 5);
  EXPECT_EQ(ColorOf(leaf->GetProjectionDispAttrib()), 0x00FFFFFF);
  EXPECT_TRUE(leaf->GetHatchA()->JudgeSame(ZGiHatchData()));
}

TEST(CategoryTree, EndsWhereItComesBackToItselfOrIsTooDeep) {
  TestDatabase db;
  auto a = NewCategory(db, 1);
  auto b = NewCategory(db, 2);
  auto c = NewCategory(db, 3);
  a->AddMember(a);
  a->AddMember(b);
  b->AddMember(a);
  b->AddMember(c);
  EXPECT_EQ(TreeOf(ZRefPtr<IZCategoryReltn>(a->CreateCategoryReltn())), "1(2(3))");
  EXPECT_EQ(TreeOf(ZRefPtr<IZCategoryReltn>(b->CreateCategoryReltn())), "2(1 3)");

  std::vector<ZRefPtr<IZCategory>> chain = {NewCategory(db, 1000)};
  for (LONG i = 1; i < 300; ++i) {
    chain.push_back(NewCategory(db, 1000 + i));
    chain[static_cast<std::size_t>(i) - 1]->AddMember(chain.back());
  }
  const ZRefPtr<IZCategoryReltn> tree = chain[0]->CreateCategoryReltn();
  auto flat = NewReltns();
  tree->CollectReltns(flat);
  EXPECT_EQ(flat->GetCount(), 256);
  EXPECT_NE(tree->FindCategoryReltn(1255), nullptr);

  auto wall = db.MakeObject();
  wall->AddRelation(tree.Get());
  auto loaded = db.MakeObject();
  LoadBytes(*loaded, BytesOf(*wall, &db), &db);
  auto* again = zdm::ViewAs<IZCategoryReltn>(loaded->GetReltnColl()->GetHead());
  EXPECT_NE(again->FindCategoryReltn(1255), nullptr) << "what is made can be read";
}

TEST(CategoryTree, OfTooManyRelationsIsNotMade) {
  TestDatabase db;
  auto c = NewCategory(db, 3);
  auto noCategory = db.MakeObject(nullptr, 4);
  for (IZDMObject* last : {static_cast<IZDMObject*>(c.Get()), noCategory.Get()}) {
    auto a = NewCategory(db, 1);
    auto b = NewCategory(db, 2);
    for (int i = 0; i < 1000; ++i) {
      a->AddMember(b);
      b->AddMember(last);
    }
    EXPECT_EQ(Thrown([&] { a->CreateCategoryReltn(); }), E_FAIL);
    const ZRefPtr<IZCategoryReltn> below = b->CreateCategoryReltn();
    ASSERT_NE(below, nullptr) << "the failure leaves no trace";
    EXPECT_EQ(below->GetSubReltns() != nullptr, last == c.Get());
  }
}

TEST(Category, TakesDisplayValuesFromItsRelationWhileItHasOne) {
  TestDatabase db;
  auto category = NewCategory(db, 1);
  auto* categorizing = zdm::ViewAs<IZCategorizing>(category);
  category->SetProjectionDispAttrib(Colored(1));
  category->SetSectionDispAttrib(Colored(2));
  category->SetCategoryVisible(false);
  for (const bool which : {true, false}) {
    EXPECT_EQ(ColorOf(categorizing->GetCategorizedDispAttrib(which)), 1);
    EXPECT_EQ(categorizing->GetCategorizedHatch(which), category->GetHatchB());
  }
  EXPECT_TRUE(categorizing->IsCategorizedVisible());
  auto relation = ReltnTo(category);
  relation->SetProjectionDispAttrib(Colored(3));
  relation->SetSectionDispAttrib(Colored(4));
  relation->ApplyToCategory();
  EXPECT_EQ(categorizing->GetCategoryReltn(), relation.Get());
  EXPECT_EQ(ColorOf(categorizing->GetCategorizedDispAttrib(true)), 3);
  EXPECT_EQ(ColorOf(categorizing->GetCategorizedDispAttrib(false)), 4);
  EXPECT_EQ(categorizing->GetCategorizedHatch(true), relation->GetHatchB());
  EXPECT_EQ(categorizing->GetCategorizedHatch(false), relation->GetHatchA());
  EXPECT_FALSE(categorizing->IsCategorizedVisible());
  categorizing->SetCategoryReltn(category.Get());
  EXPECT_EQ(categorizing->GetCategoryReltn(), nullptr);
}

/// A category that uses every field, and what it refers to.
struct Full {
  explicit Full(TestDatabase& db)
      : category(NewCategory(db, 1)),
        parent(NewCategory(db, 2)),
        member(NewCategory(db, 3)),
        material(zdm::MakeObject<IZGiMaterial, CZDMMaterial>()),
        reference(db.MakeObject(nullptr, 5)) {
    db.Add(material, 4);
    category->SetCategoryName(OLESTR("w"));
    category->SetFlags(0x1234);
    category->SetLevel(7);
    category->SetParentCategory(parent.Get());
    category->AddMember(member);
    category->SetProjectionDispAttrib(Colored(1));
    category->SetSectionDispAttrib(Colored(2));
    const auto hatch = Hatch(OLESTR("b"), 2);
    category->SetHatchA(&hatch);
    category->SetMaterial(material.Get());
    category->SetReference(reference.Get());
    const GUID key = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    category->SetKey(&key);
  }

  ZRefPtr<IZCategory> category, parent, member;
  ZRefPtr<IZGiMaterial> material;
  ZRefPtr<IZDMObject> reference;
};

constexpr std::size_t kOwnData = 41 + 4 + 3;

std::vector<BYTE> OwnDataOf(IZDMObject& object, TestDatabase& db) {
  const std::vector<BYTE> bytes = BytesOf(object, &db);
  return {bytes.begin() + kOwnData, bytes.end()};
}

TEST(CategoryStream, OfANewOneIsItsFixedPartSixZerosAndTheKey) {
  TestDatabase db;
  auto category = NewCategory(db, 0x01020304);
  EXPECT_EQ(OwnDataOf(*category, db),
            Join({Hex("04030201 00DC 04 00000000"), kNoHatch, kNoHatch, Bytes(6), Raw(GUID_NULL)}));
  EXPECT_FALSE(category->JudgeOptionAllowed(zdm::kReferencesCount));
  EXPECT_TRUE(category->JudgeOptionAllowed(zdm::kKeptWhileReferenced));
}

TEST(CategoryStream, HoldsEveryPartInOrderAndComesBack) {
  TestDatabase db;
  const Full full(db);
  IZCategory* category = full.category;
  const Bytes expected =
      Join({Hex("01000000 3412 07 0400000077000000"),
            Hex("0400000062000000 0000000000000040 0000000000000000 000000000000F03F"),
            kNoHatch,
            Hex("01 01000000"),
            Raw(zdm::ParseGuid("69F8E456-23A8-4BF9-A765-5CCF27951F72")),
            Hex("00008000 FFFFFFFF 00000000 03000000"),     // member
            Hex("01 00008000 FFFFFFFF 00000000 02000000"),  // parent
            {1},
            BytesOf(*Colored(1)),
            {1},
            BytesOf(*Colored(2)),                           // projection, section
            Hex("01 00008040 FFFFFFFF 00000000 04000000"),  // material
            Hex("01 00008040 FFFFFFFF 00000000 05000000"),
            Raw(*category->GetKey())});
  EXPECT_EQ(OwnDataOf(*category, db), expected);

  const std::vector<BYTE> bytes = BytesOf(*category, &db);
  auto loaded = NewCategory(db, 10);
  loaded->AddMember(category);
  IZReltnColl* members = loaded->GetMemberColl();
  LoadBytes(*loaded, bytes, &db);
  EXPECT_EQ(loaded->GetMemberColl(), members) << "emptied and filled";
  EXPECT_EQ(loaded->GetMemberCount(), 1);
  EXPECT_EQ(loaded->GetParentCategory()->GetNumber(), 2u);
  EXPECT_NE(loaded->GetMaterial(), nullptr);
  EXPECT_FALSE(loaded->GetHatchB()->Pattern.IsNull()) << "null reads back empty";
  EXPECT_EQ(OwnDataOf(*loaded, db), expected);
  const auto other = NewCategory(db, 11);
  ExpectCutsFail(
      bytes, [&](const Bytes& cut) { LoadBytes(*other, cut, &db); }, kOwnData);
}

TEST(CategoryStream, APartThatIsNotStoredStaysAsItIs) {
  TestDatabase db;
  const std::vector<BYTE> empty = BytesOf(*NewCategory(db, 20), &db);
  const Full full(db);
  IZCategory* category = full.category;
  LoadBytes(*category, empty, &db);
  EXPECT_EQ(category->GetNumber(), 20u);
  EXPECT_EQ(category->GetMemberCount(), 1);
  EXPECT_EQ(category->GetParentCategory()->GetNumber(), 2u);
  EXPECT_EQ(ColorOf(category->GetSectionDispAttrib()), 2);
  EXPECT_NE(category->GetMaterial(), nullptr);
  EXPECT_NE(category->GetReference(), nullptr);
}

TEST(Category, CopiesAllButLevelAndCategoryRelation) {
  TestDatabase db;
  const Full full(db);
  IZCategory* category = full.category;
  auto relation = ReltnTo(category);
  relation->ApplyToCategory();
  auto copy = zdm::CloneAs<IZCategory>(category);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->GetLevel(), 4);
  EXPECT_EQ(zdm::ViewAs<IZCategorizing>(copy)->GetCategoryReltn(), nullptr);
  EXPECT_NE(copy->GetMemberColl(), category->GetMemberColl());
  copy->SetLevel(7);
  copy->SetObjectValid(true);
  EXPECT_EQ(OwnDataOf(*copy, db), OwnDataOf(*category, db));
  EXPECT_TRUE(copy->JudgeSame(static_cast<IZDMObject*>(category)));
  copy->SetNumber(99);
  EXPECT_FALSE(copy->JudgeSame(static_cast<IZDMObject*>(category)));
  copy->CopyFrom(static_cast<IZDMObject*>(copy.Get()), zdm::kCopyMode);
  copy->CopyFrom(static_cast<IZDMObject*>(db.MakeObject()), zdm::kCopyMode);
  EXPECT_EQ(copy->GetNumber(), 99u);
  EXPECT_EQ(copy->GetMemberCount(), 1);
}

TEST(Category, OffersMaterialReferenceParentAndThenMembers) {
  TestDatabase db;
  const Full full(db);
  IZCategory* category = full.category;
  category->AddRelation(RelationTo(category));
  for (const auto& [stopAt, expected] :
       {std::pair{0, "-1 1 4 5 2 3 "}, std::pair{5, "-1 1 4 5 "}, std::pair{3, "-1 1 4 5 2 3 "}}) {
    IDNotes visitor(stopAt);
    EXPECT_EQ(category->VisitReferences(nullptr, &visitor), stopAt != 0);
    EXPECT_EQ(visitor.text, expected);
  }
}

}  // namespace
