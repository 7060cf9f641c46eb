// What arrays of parameters take from each other and from managers, and what they show on sheets.
#include "tests/parameters/ArraySupport.h"
#include "zdm/parameters/CZDMParameterMgr.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"

using namespace zdm::test;

namespace {

TEST_F(ParameterArray, ClonesAreIndependent) {
  Add({2, 1});
  array->BeginAdd();
  ZRefPtr<IZParameterArray> clone;
  array->Clone(clone.Out());
  array->EndAdd();
  EXPECT_EQ(KeysIn(clone), "1 2");
  EXPECT_EQ(clone->GetOwner(), nullptr);
  EXPECT_EQ(clone->GetAt(0)->GetOwner(), clone.Get());
  EXPECT_NE(clone->GetAt(0), array->GetAt(0));
  EXPECT_TRUE(array->IsEqualTo(clone));
  EXPECT_EQ(clone->GetParameter(Key(2)), clone->GetAt(1));
  clone->SetParamDouble(At(1), 5);
  EXPECT_FALSE(array->IsEqualTo(clone));
  EXPECT_EQ(owner->notices, 0);
}

TEST_F(ParameterArray, IsEqualToOneThatHoldsEqualParametersForAllOfItsOwn) {
  const auto other = MakeArray();
  EXPECT_TRUE(array->IsEqualTo(other));
  Add({1, 2, 3}, other);
  Add({1, 3});
  EXPECT_TRUE(array->IsEqualTo(other));
  EXPECT_FALSE(other->IsEqualTo(array));
  EXPECT_FALSE(array->IsEqualTo(nullptr));
}

TEST_F(ParameterArray, TakesOverWhatItMissesOrEverything) {
  const auto other = MakeArray();
  Add({1, 2});
  Add({2, 3}, other, 10);
  array->AddMissingFrom(other);
  array->AddMissingFrom(array);
  array->AddMissingFrom(nullptr);
  EXPECT_EQ(KeysIn(array), "1 2 3");
  EXPECT_EQ(array->GetAt(1)->GetDouble(), 2);
  EXPECT_EQ(array->GetAt(2)->GetDouble(), 13);
  EXPECT_EQ(array->GetAt(2)->GetOwner(), array.Get());
  EXPECT_NE(array->GetAt(2), other->GetAt(1));

  array->ReplaceFrom(array, false, 0);
  array->ReplaceFrom(nullptr, false, 0);
  EXPECT_EQ(KeysIn(array), "1 2 3");
  array->BeginAdd();
  array->Add(MakeParameter(), 0);
  array->ReplaceFrom(other, true, 0);  // with the bulk add it ends
  array->EndAdd();
  EXPECT_EQ(KeysIn(array), "2 3");
  EXPECT_EQ(array->GetAt(0)->GetDouble(), 2);
  EXPECT_EQ(array->GetAt(1)->GetDouble(), 13);
  array->ReplaceFrom(other, false, 0);
  EXPECT_EQ(array->GetAt(0)->GetDouble(), 12);
  EXPECT_EQ(array->GetAt(0)->GetOwner(), array.Get());
}

TEST_F(ParameterArray, TakesValuesFromAnArrayOrAManager) {
  Add({1, 2, 3});
  const auto other = MakeArray();
  Add({2, 3, 4}, other, 0);
  other->SetParamDouble(At(3), 30);
  std::list<GUID> changed;
  array->UpdateFrom(other, &changed);
  EXPECT_EQ(changed, std::list<GUID>{Key(3)});
  EXPECT_EQ(KeysIn(array), "1 2 3");
  EXPECT_EQ(array->GetAt(2)->GetDouble(), 30);
  EXPECT_EQ(owner->notices, 2);  // also for the value that was equal

  const auto manager = zdm::MakeObject<CZDMParameterMgr, CZDMParameterMgr>();
  db.Add(manager.Get());
  manager->AddDoubleParameter(db.manager, At(4), 4, 40, 0);
  manager->AddDoubleParameter(db.manager, At(1), 1, 10, 0);
  array->UpdateFrom(manager->GetIZObject(), &changed);
  EXPECT_EQ(changed, (std::list<GUID>{Key(3), Key(1)}));
  EXPECT_EQ(array->GetAt(0)->GetDouble(), 10);
  array->UpdateFrom(owner->GetIZObject(), nullptr);
  array->UpdateFrom(nullptr, nullptr);
  EXPECT_EQ(array->GetAt(0)->GetDouble(), 10);
}

TEST_F(ParameterArray, GroupsFollowTheRegistrationOfTheirNames) {
  db.manager->RegisterName(3, OLESTR("Shape"));
  db.manager->RegisterName(7, OLESTR("Size"));
  for (const auto& [number, index] : {std::pair<BYTE, LONG>{1, 7}, {2, 3}, {3, 7}, {4, 5}}) {
    db.Make(number, 3, index);
  }
  const auto groups = zdm::NewOf<IZPropertyGroupColl, CZPropertyGroupColl>();
  array->BuildPropertyGroups(0, groups);
  EXPECT_TRUE(groups->IsEmpty());
  Add({1, 2, 3, 4});
  array->BuildPropertyGroups(0, groups);
  std::string sheet;
  for (LONGLONG pos = groups->GetHeadPosition(); pos != 0;) {
    IZPropertyGroup* const group = groups->GetNext(pos);
    sheet += TextOf([&](BSTR* out) { group->GetName(out); }) + ":";
    for (IZProperty* property : Members(group->GetProperties())) {
      sheet += ' ' + NameOf(property);
      EXPECT_NE(property, array->GetAt(0)->GetDefinition()->GetProperty());
    }
    sheet += "; ";
  }
  EXPECT_EQ(sheet, "Shape: P2; Size: P1 P3; Unknown: P4; ");
}

TEST_F(ParameterArray, PropertiesGoToTheFirstParameterThatHandlesThem) {
  Add({1, 2, 2});
  const auto property = MakeProperty();
  property->SetGUID(Key(2));
  array->GetAt(2)->SetDouble(20);
  EXPECT_TRUE(array->FillProperties(0, property));
  EXPECT_EQ(property->GetDouble(), 2);
  owner->notices = 0;
  property->SetDouble(5);
  EXPECT_TRUE(array->ApplyProperties(0, property, 0));
  EXPECT_EQ(array->GetAt(1)->GetDouble(), 5);
  EXPECT_EQ(array->GetAt(2)->GetDouble(), 20);
  EXPECT_EQ(owner->notices, 0);
  EXPECT_TRUE(array->FillProperties(0, nullptr));
  EXPECT_TRUE(array->ApplyProperties(0, nullptr, 0));
}

}  // namespace
