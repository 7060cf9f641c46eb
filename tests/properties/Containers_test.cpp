// Lists, groups and pairs of properties.
#include "tests/properties/PropertySupport.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZPropertyArray.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/properties/IZPropertyPairs.h"
#include "zdm/properties/IZPropertyYesNo.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(PropertyColl, AddsPropertiesOfEachType) {
  const auto coll = zdm::NewOf<IZPropertyColl, CZPropertyColl>();
  const struct {
    IZProperty* property;
    ULONG type;
    const char* names;
    bool isYesNo;
  } rows[] = {
      {coll->AddDouble(OLESTR("r"), OLESTR("Real"), Key(1), 1.5), 3, "r Real", false},
      {coll->AddLong(OLESTR("n"), OLESTR("Number"), Key(2), 7), 2, "n Number", false},
      {coll->AddString(OLESTR("t"), OLESTR("Text"), Key(3), OLESTR("abc")), 1, "t Text", false},
      {coll->AddBool(OLESTR("f"), nullptr, Key(4), true), 10, "f f", true},
      {coll->AddYesNo(OLESTR("u"), OLESTR(""), Key(5)), 10, "u ", true},
      {coll->AddNamedProperty(OLESTR("m"), Key(6), 77), 77, "m m", false}};
  const auto members = Members(coll.Get());
  ASSERT_EQ(members.size(), std::size(rows));
  for (BYTE i = 0; const auto& row : rows) {
    SCOPED_TRACE(row.names);
    EXPECT_EQ(row.property, members[i++]);
    EXPECT_EQ(row.property->GetType(), row.type);
    EXPECT_EQ(NameOf(row.property) + ' ' + DisplayNameOf(row.property), row.names);
    EXPECT_TRUE(row.property->HasGUID(Key(i)));
    EXPECT_EQ(zdm::ViewAs<IZPropertyYesNo>(row.property) != nullptr, row.isYesNo);
    EXPECT_EQ(row.property->GetReferenceCount(), 1u);
  }
  EXPECT_EQ(members[0]->GetDouble(), 1.5);
  EXPECT_EQ(members[1]->GetLong(), 7);
  EXPECT_EQ(TextOf([&](BSTR* out) { members[2]->GetString(out); }), "abc");
  EXPECT_TRUE(members[3]->GetBool());
  EXPECT_FALSE(members[4]->GetBool());
}

TEST(PropertyColl, AddsNothingOfAClassThatIsNoProperty) {
  const auto coll = zdm::NewOf<IZPropertyColl, CZPropertyColl>();
  const GUID unknown = Key(1);
  const GUID* classes[] = {nullptr, &unknown, &zdm::ClassRow<CZPropKeyArray>::kClassID};
  for (const GUID* classId : classes) {
    EXPECT_EQ(coll->AddProperty(classId, OLESTR("a"), nullptr, Key(2), 1), nullptr);
  }
  EXPECT_TRUE(coll->IsEmpty());
}

std::string GroupName(IZPropertyGroup* group) {
  return TextOf([&](BSTR* out) { group->GetName(out); });
}

TEST(PropertyGroup, HasTwoNamesAndCopiesWithoutItsOwnAndWithoutMembers) {
  const auto group = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  auto* property = zdm::ViewAs<IZProperty>(group);
  group->SetName(OLESTR("group"));
  property->SetName(OLESTR("property"));
  group->AddLong(OLESTR("a"), nullptr, Key(1), 1);
  EXPECT_EQ(GroupName(group) + NameOf(property), "groupproperty");
  const auto copy = zdm::CloneAs<IZPropertyGroup>(group);
  EXPECT_EQ(GroupName(copy) + NameOf(zdm::ViewAs<IZProperty>(copy)), "property");
  EXPECT_TRUE(copy->IsEmpty());
}

TEST(PropertyGroup, HoldsPropertiesAndGroups) {
  const auto group = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  EXPECT_TRUE(group->IsEmpty());
  IZPropertyGroup* below = group->AddGroup(OLESTR("below"));
  IZPropertyGroup* unnamed = group->AddGroup(nullptr);
  EXPECT_FALSE(group->IsEmpty());
  EXPECT_EQ(group->GetGroups()->FindGroup(OLESTR("below")), below);
  EXPECT_EQ(group->GetGroups()->FindGroup(OLESTR("Below")), nullptr);
  EXPECT_EQ(group->GetGroups()->FindGroup(OLESTR("")), unnamed);

  below->AddDouble(OLESTR("d"), nullptr, Key(1), 0.5);
  below->AddLong(OLESTR("l"), nullptr, Key(2), 5);
  below->AddString(OLESTR("s"), nullptr, Key(3), OLESTR("x"));
  below->AddBool(OLESTR("b"), nullptr, Key(4), true);
  EXPECT_FALSE(below->IsEmpty());
  std::vector<ULONG> types;
  for (IZProperty* each : Members(below->GetProperties())) types.push_back(each->GetType());
  EXPECT_EQ(types, (std::vector<ULONG>{3, 2, 1, 10}));
}

TEST(PropertyGroup, FindsItsOwnPropertiesFirstThenDepthFirst) {
  const auto root = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  IZPropertyGroup* first = root->AddGroup(OLESTR("1"));
  IZPropertyGroup* deep = first->AddGroup(OLESTR("1.1"));
  IZPropertyGroup* second = root->AddGroup(OLESTR("2"));
  const auto add = [](IZPropertyGroup* group, BYTE key) {
    return group->AddLong(OLESTR("a"), nullptr, Key(key), 1);
  };
  add(second, 1);
  add(second, 2);
  IZProperty* inDeep = add(deep, 2);
  add(deep, 3);
  IZProperty* inFirst = add(first, 3);
  IZProperty* inRoot = add(root, 1);
  add(root, 1);
  second->AddLong(OLESTR("unset"), nullptr, GUID_UNSET, 1);
  EXPECT_EQ(root->FindProperty(Key(1)), inRoot);
  EXPECT_EQ(root->FindProperty(Key(2)), inDeep);
  EXPECT_EQ(root->FindProperty(Key(3)), inFirst);
  EXPECT_EQ(root->GetGroups()->FindProperty(Key(3)), inFirst);
  EXPECT_EQ(root->FindProperty(Key(4)), nullptr);
  for (IZPropertyGroup* group : {root.Get(), second}) {
    EXPECT_EQ(group->FindProperty(GUID_UNSET), nullptr);
    EXPECT_EQ(group->GetGroups()->FindProperty(GUID_UNSET), nullptr);
  }
}

TEST(PropertyGroup, SearchesGroupsThatHoldEachOtherOnce) {
  // Each group stands twice in the one above: 2^60 ways down, and back to the top at the bottom.
  const auto top = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  IZPropertyGroup* bottom = top;
  for (int i = 0; i < 60; ++i) {
    IZPropertyGroup* next = bottom->AddGroup(OLESTR("next"));
    bottom->GetGroups()->AddTail(next);
    bottom = next;
  }
  bottom->GetGroups()->AddTail(top);
  EXPECT_EQ(top->FindProperty(Key(1)), nullptr);
  IZProperty* found = bottom->AddLong(OLESTR("a"), nullptr, Key(1), 1);
  EXPECT_EQ(top->FindProperty(Key(1)), found);
  bottom->GetGroups()->RemoveAll();
}

TEST(PropertyPairs, CopyAppendsClones) {
  const auto pairs = zdm::NewOf<IZPropertyPairs, CZPropertyPairs>();
  auto* property = zdm::ViewAs<IZProperty>(pairs);
  const auto member = MakeProperty();
  member->SetName(OLESTR("a"));
  pairs->AddTail(member);
  pairs->AddTail(zdm::NewOf<IZObject, CZPropKeyArray>());  // no property: a null element
  pairs->AddTail(pairs);                                   // and itself
  property->SetLong(3);
  const auto target = zdm::NewOf<IZPropertyPairs, CZPropertyPairs>();
  target->AddTail(MakeProperty());
  zdm::ViewAs<IZProperty>(target)->CopyFrom(property);
  EXPECT_EQ(zdm::ViewAs<IZProperty>(target)->GetLong(), 3);
  const auto copies = Members(target.Get());
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_EQ(NameOf(copies[1]), "a");
  EXPECT_NE(copies[1], member.Get());
  EXPECT_TRUE(zdm::ViewAs<IZPropertyPairs>(copies[2])->IsEmpty());
  pairs->RemoveAll();
}

TEST(PropertyPairs, MergeOnlyTurnsReadOnly) {
  const auto pairs = zdm::NewOf<IZPropertyPairs, CZPropertyPairs>();
  auto* property = zdm::ViewAs<IZProperty>(pairs);
  bool result = true;
  EXPECT_EQ(pairs->MergePairs(nullptr, &result), 1);
  EXPECT_EQ(pairs->MergePairs(MakeProperty(), &result), 1);
  EXPECT_TRUE(result && !property->IsReadOnly());
  EXPECT_EQ(pairs->MergePairs(zdm::NewOf<IZPropertyPairs, CZPropertyPairs>(), &result), 0);
  EXPECT_TRUE(!result && property->IsReadOnly());
}

TEST(PropertyArray, CopyReplacesItsMembersByClones) {
  const auto nestedIn = [](int depth) {
    auto outer = zdm::NewOf<IZPropertyArray, CZPropertyArray>();
    while (--depth > 0) {
      auto next = zdm::NewOf<IZPropertyArray, CZPropertyArray>();
      next->AddTail(outer);
      outer = next;
    }
    return outer;
  };
  const auto target = zdm::NewOf<IZPropertyArray, CZPropertyArray>();
  const auto kept = MakeProperty();
  target->AddTail(kept);
  EXPECT_EQ(Thrown([&] { target->CopyFrom(nestedIn(257)); }), E_FAIL);
  EXPECT_EQ(Members(target.Get()), std::vector<IZProperty*>{kept.Get()});
  target->CopyFrom(nestedIn(256));
  ASSERT_EQ(target->GetCount(), 1);
  EXPECT_NE(target->GetHead(), kept.Get());
}

}  // namespace
