// A parameter that is an object besides: the two sides, and the visitor that it answers specially.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/relations/ZReltnVisitorDiffuse.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(DMParameter, KeepsTheTwoSidesApart) {
  Definitions db;
  const auto parameter = MakeSource(db, db.Make(1));
  IZDMObject* object = ObjectOf(parameter);
  const auto array = zdm::NewOf<IZParameterArray, CZParameterArray>();
  parameter->SetOwner(array);
  EXPECT_EQ(parameter->GetOwner(), array);
  EXPECT_EQ(object->GetOwner()->GetOID(), db.GetOID());
  object->SetOwner(nullptr);
  EXPECT_EQ(parameter->GetOwner(), array);
  EXPECT_EQ(NameOf(parameter), "P1");
  EXPECT_EQ(TextOf([&](BSTR* out) { object->GetName(out); }), "-");
  EXPECT_EQ(TextOf([&](BSTR* out) { object->GetDisplayName(out); }), "CZDMParameter");
}

TEST(DMParameter, CopiesAndComparesAsAParameter) {
  Definitions db;
  const auto parameter = MakeSource(db, db.Make(1));
  parameter->SetDouble(2.5);
  const auto copy = zdm::CloneAs<IZParameter>(parameter);
  EXPECT_EQ(copy->GetZRID(), CZDMParameter::kClassID);
  EXPECT_EQ(copy->GetDefinition(), parameter->GetDefinition());
  EXPECT_EQ(ObjectOf(copy)->GetID(), ObjectOf(parameter)->GetID());
  EXPECT_TRUE(ObjectOf(copy)->JudgeSame(ObjectOf(parameter)));
  copy->SetKey(3);
  EXPECT_FALSE(ObjectOf(copy)->JudgeSame(ObjectOf(parameter)));
  EXPECT_FALSE(ObjectOf(copy)->JudgeSame(db.MakeObject()));
  copy->SetLong(4);
  ObjectOf(copy)->CopyFrom(db.MakeObject(), 0);
  EXPECT_EQ(copy->GetLong(), 4) << "from a plain object only what an object takes";
}

TEST(DMParameter, SpreadsAffectedAlongItsCollectionOnce) {
  Definitions db;
  const auto parameter = MakeSource(db, db.Make(1));
  IZDMObject* object = ObjectOf(parameter);
  const auto target = db.MakeObject();
  const auto relation = RelationTo(target);
  relation->SetReltnDiffusible(true);
  object->AddRelation(relation);

  ZReltnVisitorDiffuse affected;
  affected.Initialize(ZOS_AFFECTED, true);
  EXPECT_TRUE(object->VisitReferences(nullptr, &affected));
  EXPECT_TRUE(object->JudgeStatus(ZOS_AFFECTED));
  EXPECT_TRUE(target->JudgeStatus(ZOS_AFFECTED));
  target->ClearStatus(ZOS_AFFECTED);
  EXPECT_TRUE(object->VisitReferences(nullptr, &affected));
  EXPECT_FALSE(target->JudgeStatus(ZOS_AFFECTED)) << "once marked it is not walked again";

  ZReltnVisitorDiffuse marking;
  marking.Initialize(ZOS_DIFFUSEMARK, true);
  EXPECT_FALSE(object->VisitReferences(nullptr, &marking));
  EXPECT_TRUE(db.TestDatabase::JudgeStatus(ZOS_DIFFUSEMARK)) << "any other status as of any object";
}

}  // namespace
