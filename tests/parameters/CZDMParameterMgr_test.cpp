// A document's own parameters: making, finding, reading and writing, sheets, and exchange with
// arrays.
#include "zdm/parameters/CZDMParameterMgr.h"

#include "tests/parameters/ValueKinds.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

class ParameterMgr : public testing::Test {
 protected:
  ParameterMgr() { db.Add(manager); }

  ZRefPtr<IZParameter> Find(BYTE number) {
    const GUID key = Key(number);
    ZRefPtr<IZParameter> found;
    manager->FindParameter(&key, found.Out());
    return found;
  }
  void AddLong(BYTE number, LONG value) {
    const GUID key = Key(number);
    manager->AddLongParameter(db.manager, &key, number, value, 0x0A);
  }
  ZRefPtr<IZParameterArray> Exported() {
    ZRefPtr<IZParameterArray> array;
    manager->ExportParameters(array.Out());
    return array;
  }

  Definitions db;
  ZRefPtr<IZParameterMgr> manager = zdm::MakeObject<IZParameterMgr, CZDMParameterMgr>();
};

TEST_F(ParameterMgr, MakesRegisteredParametersOfAnyKind) {
  const auto target = db.MakeObject(nullptr, 77);
  AddOfEachType(*manager, db, target);
  for (int i = 0; i < 6; ++i) {
    const auto parameter = Find(static_cast<BYTE>(i + 1));
    ExpectOfEachType(parameter, i);
    EXPECT_EQ(parameter->GetZRID(), CZDMParameter::kClassID);
    EXPECT_TRUE(ObjectOf(parameter)->IsObjectAttached());
    EXPECT_EQ(ObjectOf(parameter)->GetOwner()->GetOID(), manager->GetOID());
  }
  AddLong(7, 1);
  EXPECT_EQ(manager->GetCount(), 7) << "also without a definition";
  EXPECT_EQ(NameOf(zdm::ViewAs<IZParameter>(manager->GetTail())), "Unknown");
}

TEST_F(ParameterMgr, FindsTheFirstOfADefinition) {
  db.Make(1);
  manager->AddTail(zdm::MakeObject<IZObject, CZDMPlainObject>());
  AddLong(9, 4);
  AddLong(1, 5);
  AddLong(1, 6);
  EXPECT_EQ(Find(1)->GetLong(), 5);
  EXPECT_EQ(Find(9), nullptr) << "its parameter has no definition";
  const GUID key = Key(1);
  IZParameter* out = Find(1);
  EXPECT_FALSE(manager->FindParameter(&GUID_UNSET, &out));
  EXPECT_EQ(out, nullptr);
  EXPECT_TRUE(manager->HasParameter(&key));
  EXPECT_FALSE(manager->HasParameter(&GUID_UNSET));
}

TEST_F(ParameterMgr, ReadsAndWritesByDefinition) {
  db.Make(1);
  AddLong(1, 5);
  const GUID key = Key(1);
  const GUID missing = Key(2);
  IZDMObject* side = manager;
  LONG number = 7;
  EXPECT_FALSE(side->GetParamLong(&missing, &number));
  EXPECT_FALSE(side->SetParamLong(&missing, 8));
  EXPECT_EQ(number, 7);
  EXPECT_TRUE(side->GetParamLong(&key, &number));
  EXPECT_EQ(number, 5);

  double real = 0;
  bool flag = false;
  ZDfLong value;
  ZDfValue* held = nullptr;
  EXPECT_TRUE(side->SetParamDouble(&key, 2.5) && side->GetParamDouble(&key, &real));
  EXPECT_EQ(real, 2.5);
  EXPECT_TRUE(side->SetParamString(&key, OLESTR("t")));
  EXPECT_EQ(TextOf([&](BSTR* out) { side->GetParamString(&key, out); }), "t");
  EXPECT_TRUE(side->SetParamBool(&key, true) && side->GetParamBool(&key, &flag) && flag);
  EXPECT_TRUE(side->SetParamValue(&key, &value) && side->GetParamValue(&key, &held));
  EXPECT_EQ(held, Find(1)->GetValue());
}

TEST_F(ParameterMgr, HasTwoWaysToSetARelation) {
  db.Make(1);
  AddLong(1, 5);
  const GUID key = Key(1);
  const auto object = db.MakeObject();
  EXPECT_FALSE(manager->SetParamRelation(&key, object, true)) << "that of any object: its array's";
  EXPECT_EQ(Find(1)->GetLong(), 5);
  EXPECT_TRUE(manager->SetManagedParamRelation(&key, object, true));
  ZRefPtr<IZDMObject> target;
  EXPECT_TRUE(manager->GetParamRelation(&key, target.Out()));
  EXPECT_EQ(target, object);
}

TEST_F(ParameterMgr, ExportsCopies) {
  EXPECT_TRUE(Exported()->IsEmpty());
  db.Make(2);
  db.Make(1);
  AddLong(2, 20);
  AddLong(1, 10);
  const auto array = Exported();
  ASSERT_EQ(array->GetCount(), 2);
  EXPECT_EQ(array->GetAt(0)->GetLong(), 10) << "in the order of an array";
  EXPECT_EQ(array->GetAt(0)->GetZRID(), CZParameter::kClassID);
  EXPECT_TRUE(manager->IsEqualTo(array));
  array->GetAt(0)->SetLong(11);
  EXPECT_FALSE(manager->IsEqualTo(array));
  EXPECT_EQ(Find(1)->GetLong(), 10);
}

TEST_F(ParameterMgr, TakesValuesFromArraysAndManagers) {
  for (BYTE number = 1; number <= 3; ++number) db.Make(number);
  AddLong(1, 1);
  AddLong(2, 2);
  const auto other = zdm::MakeObject<IZParameterMgr, CZDMParameterMgr>();
  const GUID keys[] = {Key(3), Key(2), Key(1)};
  for (const GUID& key : keys) other->AddLongParameter(db.manager, &key, 3, 30, 0x0A);
  ZRefPtr<IZParameterArray> array;
  other->ExportParameters(array.Out());
  const std::list<GUID> inOrderOfManager = {Key(2), Key(1)};
  const std::list<GUID> inOrderOfArray = {Key(1), Key(2)};
  const struct {
    IZObject* source;
    const std::list<GUID>& changed;
  } rows[] = {{other, inOrderOfManager}, {array, inOrderOfArray}};
  for (const auto& row : rows) {
    Find(1)->SetLong(1);
    Find(2)->SetLong(2);
    std::list<GUID> changed;
    manager->UpdateFrom(row.source, &changed);
    EXPECT_EQ(changed, row.changed);
    EXPECT_EQ(Find(1)->GetLong(), 30);
    EXPECT_EQ(Find(2)->GetLong(), 30);
    EXPECT_EQ(Find(3), nullptr);
  }
  std::list<GUID> none;
  manager->UpdateFrom(manager, &none);
  EXPECT_TRUE(none.empty());
}

TEST_F(ParameterMgr, BuildsGroupsInTheOrderOfFirstAppearance) {
  db.manager->RegisterName(3, OLESTR("three"));
  db.manager->RegisterName(7, OLESTR("seven"));
  db.Make(1, 2, 7);
  db.Make(2, 2, 3);
  db.Make(3, 2, 7);
  for (BYTE number = 1; number <= 3; ++number) AddLong(number, number);
  const auto groups = zdm::NewOf<IZPropertyGroupColl, CZPropertyGroupColl>();
  manager->BuildPropertyGroups(0, groups);
  ASSERT_EQ(groups->GetCount(), 2);
  EXPECT_EQ(TextOf([&](BSTR* out) { groups->GetHead()->GetName(out); }), "seven");
  EXPECT_EQ(TextOf([&](BSTR* out) { groups->GetTail()->GetName(out); }), "three");
  ASSERT_EQ(groups->GetHead()->GetProperties()->GetCount(), 2);

  IZProperty* property = groups->GetHead()->GetProperties()->GetTail();
  EXPECT_TRUE(manager->FillProperties(0, property));
  EXPECT_EQ(property->GetLong(), 3);
  property->SetLong(33);
  EXPECT_TRUE(manager->ApplyProperties(0, property, 0));
  EXPECT_EQ(Find(3)->GetLong(), 33);
  EXPECT_EQ(Find(1)->GetLong(), 1);
}

}  // namespace
