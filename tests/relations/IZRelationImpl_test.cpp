// The relation bases: status word, target, copies and stream forms.
#include "platform/geometry/GeBox.h"
#include "platform/geometry/SubID.h"
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <memory>

ZDM_TEST_CLASS(Nameless, IZObject, IZRelation)

namespace zdm::test {

/// A relation that the factory does not know.
class Nameless : public IZRelationImpl<IZRelation> {
  ZDM_OBJECT(Nameless)
};

ZDM_OBJECT_BODY(Nameless)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

TEST(Relation, StartsValidWithoutTagAndTarget) {
  const auto reltn = zdm::MakeObject<IZSingleReltn, PlainReltn>();
  EXPECT_EQ(reltn->GetReltnStatus(), 0x00800000);
  EXPECT_EQ(reltn->GetReltnTag(), -1);
  EXPECT_EQ(reltn->GetReltnOID(), nullptr);
  EXPECT_EQ(reltn->GetReltnObject(), nullptr);
  EXPECT_FALSE(reltn->IsValid());
  EXPECT_TRUE((zdm::MakeObject<IZRelation, Shape>()->IsValid()));
}

TEST(Relation, JudgesEveryBitOfTheMask) {
  const auto reltn = Valid('a');
  reltn->SetReltnStatus(0x3);
  EXPECT_TRUE(reltn->JudgeReltnStatus(0));
  EXPECT_TRUE(reltn->JudgeReltnStatus(ZRS_VALID | 0x2));
  EXPECT_FALSE(reltn->JudgeReltnStatus(0x6));
  reltn->ClearReltnStatus(0x1 | 0x4);
  EXPECT_EQ(reltn->GetReltnStatus(), ZRS_VALID | 0x2);
  reltn->SetReltnStatus(static_cast<LONG>(0x80000000));
  EXPECT_TRUE(reltn->JudgeReltnStatus(static_cast<LONG>(0x80000000)));
}

TEST(Relation, DiffusibleIsItsStatusBit) {
  const auto reltn = Valid('a');
  EXPECT_FALSE(reltn->IsReltnDiffusible());
  reltn->SetReltnDiffusible(true);
  EXPECT_EQ(reltn->GetReltnStatus(), ZRS_VALID | ZRS_DIFFUSIBLE);
  reltn->SetReltnDiffusible(false);
  EXPECT_EQ(reltn->GetReltnStatus(), ZRS_VALID);
}

TEST(Relation, CloneIsANewObjectOfTheClassWithCountZero) {
  OID oid(0, 0, 7, nullptr);
  const auto reltn = Invalid('a');
  reltn->SetReltnOID(&oid);
  IZObject* raw = reltn->Clone();
  ASSERT_NE(raw, nullptr);
  EXPECT_EQ(raw->GetReferenceCount(), 0u);
  const ZRefPtr<IZSingleReltn> copy = raw;
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, reltn);
  EXPECT_EQ(copy->GetReltnStatus(), 0);
  EXPECT_EQ(copy->GetReltnTag(), 'a');
  EXPECT_EQ(copy->GetReltnOID(), &oid);
}

TEST(Relation, CloneFormsHandOutOneReference) {
  auto* reltn = new PlainReltn;
  reltn->SetReltnTag('a');
  IZRelation* plain = nullptr;
  IZSingleReltn* single = nullptr;
  reltn->Clone(&plain);
  reltn->Clone(&single);
  reltn->Release();
  ASSERT_NE(plain, nullptr);
  ASSERT_NE(single, nullptr);
  EXPECT_EQ(plain->GetReltnTag(), 'a');
  EXPECT_EQ(single->GetReltnTag(), 'a');
  EXPECT_EQ(plain->Release(), 0u);
  EXPECT_EQ(single->Release(), 0u);
}

TEST(Relation, ClassOutsideTheFactoryIsNotCloned) {
  auto reltn = zdm::MakeObject<IZRelation, Nameless>();
  EXPECT_EQ(reltn->Clone(), nullptr);
}

TEST(Relation, SameMeansSameClassAndTarget) {
  OID first(0, 0, 1, nullptr);
  OID equal(0, 0, 1, nullptr);
  const auto a = Valid('a');
  const auto b = Invalid('b');
  EXPECT_TRUE(a->JudgeSame(b));
  a->SetReltnOID(&first);
  EXPECT_FALSE(a->JudgeSame(b));
  b->SetReltnOID(&equal);
  EXPECT_FALSE(a->JudgeSame(b)) << "another record of the same ID";
  b->SetReltnOID(&first);
  EXPECT_TRUE(a->JudgeSame(b));
  EXPECT_FALSE(a->JudgeSame(nullptr));
  const auto shape = zdm::MakeObject<IZRelation, Shape>();
  EXPECT_FALSE(a->JudgeSame(shape));
  EXPECT_FALSE(shape->JudgeSame(a));
  EXPECT_TRUE(shape->JudgeSame(zdm::MakeObject<IZRelation, Shape>()));
}

TEST(Relation, ShowsNothing) {
  Nameless reltn;
  double box[6] = {};
  reltn.GetBox(box, nullptr, nullptr);
  for (const double value : box) EXPECT_EQ(value, 1e20);
  EXPECT_EQ(reltn.GetSizeX(nullptr, nullptr), 0.0);
  EXPECT_TRUE(reltn.IsVisible(zdm::kCategoryDraw, nullptr));
  EXPECT_EQ(reltn.GetDisplayValue(), 0xFFFFFFFFu);
  EXPECT_EQ(reltn.GetDispAttrib(), nullptr);
  EXPECT_FALSE(reltn.JudgeStatus(2));
  EXPECT_TRUE(reltn.Reserved41());
  BSTR name = nullptr;
  reltn.GetName(&name);
  EXPECT_EQ(name, nullptr);
  EXPECT_FALSE(reltn.IsDumpRef());
  EXPECT_FALSE(reltn.Accept(nullptr, nullptr, nullptr));
}

TEST(Relation, DerivesBoxesAndSizesFromGetBox) {
  Shape shape;
  const double box[6] = {1, -2, 3, 2, 2, 3.5};
  std::copy(std::begin(box), std::end(box), shape.box);
  SubID sub;
  GeBox bounds;
  shape.GetGeBox(&bounds, &sub, nullptr);
  EXPECT_EQ(bounds, GeBox(XYZ{1, -2, 3}, XYZ{2, 2, 3.5}));
  EXPECT_EQ(shape.askedSub, &sub);
  EXPECT_EQ(shape.GetSizeX(nullptr, nullptr), 1.0);
  EXPECT_EQ(shape.GetSizeY(&sub, nullptr), 4.0);
  EXPECT_EQ(shape.askedSub, &sub);
  EXPECT_EQ(shape.GetSizeZ(nullptr, nullptr), 0.5);
  GeBox united(XYZ{0, 0, 0}, XYZ{1, 1, 1});
  shape.UnionBox(&united);
  EXPECT_EQ(united, GeBox(XYZ{0, -2, 0}, XYZ{2, 2, 3.5}));
  EXPECT_EQ(shape.askedSub, nullptr);
}

TEST(Relation, TransformsOfRowsReachTheMatrixForm) {
  Shape shape;
  const double three[][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {4, 5, 6}};
  shape.Transform(three);
  EXPECT_EQ(shape.moved, (XYZ{4, 5, 6}));
  const double four[][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {7, 8, 9, 1}};
  shape.Transform(four);
  EXPECT_EQ(shape.moved, (XYZ{7, 8, 9}));
}

TEST(SingleReltn, FollowsItsTargetsRecord) {
  const auto thing = zdm::MakeObject<IZDMObject, Thing>();
  const auto reltn = Valid('a');
  reltn->SetReltnObj(thing);
  EXPECT_EQ(reltn->GetReltnOID(), thing->GetOID());
  EXPECT_EQ(reltn->GetReltnObject(), thing);
  EXPECT_FALSE(reltn->IsValid()) << "the object is not";
  EXPECT_EQ(reltn->GetValidReltnObject(), nullptr);
  thing->SetObjectValid(true);
  EXPECT_TRUE(reltn->IsValid());
  EXPECT_EQ(reltn->GetValidReltnObject(), thing);
  reltn->ClearReltnStatus(ZRS_VALID);
  EXPECT_FALSE(reltn->IsValid());
  EXPECT_EQ(reltn->GetValidReltnObject(), nullptr);
  EXPECT_EQ(reltn->GetReltnObject(), thing);
  EXPECT_EQ(thing->GetReferenceCount(), 1u) << "a relation holds no reference";
}

TEST(SingleReltn, TakesOnlyDataModelObjects) {
  OID dead(0, 0, 3, nullptr);
  const auto reltn = Valid('a');
  const auto stranger = zdm::MakeObject<IZObject, Stranger>();
  for (IZObject* object : {static_cast<IZObject*>(nullptr), stranger.Get()}) {
    reltn->SetReltnOID(&dead);
    reltn->SetReltnObj(object);
    EXPECT_EQ(reltn->GetReltnOID(), nullptr);
  }
}

TEST(SingleReltn, KeepsTheRecordWhenItAlreadyLeadsToTheObject) {
  const auto thing = zdm::MakeObject<IZDMObject, Thing>();
  OID second(0, 0, 8, thing);
  const auto reltn = Valid('a');
  reltn->SetReltnOID(&second);
  reltn->SetReltnObj(thing);
  EXPECT_EQ(reltn->GetReltnOID(), &second);
  const std::unique_ptr<OID> own(thing->GetOID());
  thing->SetOID(nullptr, true);
  EXPECT_EQ(reltn->GetValidReltnObject(), nullptr) << "an object without a record of its own";
}

TEST(SingleReltn, CopiesTheTargetItself) {
  OID oid(0, 0, 7, nullptr);
  const auto source = Invalid('s');
  source->SetReltnStatus(0x10);
  source->SetReltnOID(&oid);
  const auto reltn = Valid('a');
  reltn->SetReltnStatus(0x20);
  reltn->CopyFrom(source);
  EXPECT_EQ(reltn->GetReltnStatus(), 0x10) << "the whole word";
  EXPECT_EQ(reltn->GetReltnOID(), &oid);
  EXPECT_EQ(reltn->GetReltnTag(), 's');

  reltn->CopyFrom(nullptr);
  EXPECT_EQ(reltn->GetReltnOID(), nullptr);
  EXPECT_EQ(reltn->GetReltnTag(), 's') << "null takes away nothing else";

  reltn->SetReltnOID(&oid);
  const auto shape = zdm::MakeObject<IZRelation, Shape>();
  shape->SetReltnTag('z');
  reltn->CopyFrom(shape);
  EXPECT_EQ(reltn->GetReltnOID(), nullptr) << "a shape has no target";
  EXPECT_EQ(reltn->GetReltnTag(), 'z');
}

TEST(SingleReltn, OffersItsTargetForReplacement) {
  OID old(0, 0, 7, nullptr);
  OID fresh(0, 0, 8, nullptr);
  const auto thing = zdm::MakeObject<IZDMObject, Thing>();
  const auto root = zdm::MakeObject<IZDMObject, Thing>();
  const auto reltn = Valid('a');
  Recorder visitor;
  visitor.newOid = &fresh;
  EXPECT_FALSE(reltn->Accept(root, thing, &visitor)) << "no target yet";
  EXPECT_EQ(visitor.words, "");
  reltn->SetReltnOID(&old);
  EXPECT_FALSE(reltn->Accept(root, thing, &visitor));
  EXPECT_EQ(visitor.words, "oid7");
  EXPECT_EQ(visitor.askedRoot, root);
  EXPECT_EQ(visitor.askedOwner, thing);
  EXPECT_EQ(visitor.askedReltn, reltn);
  EXPECT_EQ(reltn->GetReltnOID(), &fresh);
  visitor.stopAt = "oid8";
  EXPECT_TRUE(reltn->Accept(root, thing, &visitor));
}

// clang-format off
const std::vector<BYTE> kRecord = {
    0x01, 0x00, 0x80, 0x40,   // status
    0xFE, 0xFF, 0xFF, 0xFF,   // tag -2
    0xDD, 0xCC, 0xBB, 0xAA,   // spare
    0x07, 0x00, 0x00, 0x00};  // target
// clang-format on

TEST(RelationStream, CarriesStatusTagAndSpareWord) {
  const std::vector<BYTE> record(kRecord.begin(), kRecord.begin() + 12);
  ByteStream stream(record);
  const auto shape = zdm::MakeObject<IZRelation, Shape>();
  EXPECT_EQ(Saved(*shape), (std::vector<BYTE>{0, 0, 0x80, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}));
  shape->Load(&stream, nullptr);
  EXPECT_EQ(shape->GetReltnStatus(), 0x40800001);
  EXPECT_EQ(shape->GetReltnTag(), -2);
  EXPECT_EQ(Saved(*shape), record);
}

TEST(RelationStream, LooksTheTargetUp) {
  OID oid(0, 0, 7, nullptr);
  Lookup known;
  known.records[7] = &oid;
  Lookup empty;
  const struct {
    const char* what;
    IZDatabase* database;
    OID* target;
  } rows[] = {
      {"listed", &known, &oid}, {"not listed", &empty, nullptr}, {"none", nullptr, nullptr}};
  for (const auto& row : rows) {
    ByteStream stream(kRecord);
    const auto reltn = Valid('a');
    OID former(0, 0, 9, nullptr);
    reltn->SetReltnOID(&former);
    reltn->Load(&stream, row.database);
    EXPECT_EQ(reltn->GetReltnOID(), row.target) << row.what;
    if (row.target != nullptr) {
      EXPECT_EQ(Saved(*reltn), kRecord);
    }
  }
}

TEST(RelationStream, IdZeroIsNoTarget) {
  OID oid(0, 0, 0, nullptr);
  Lookup database;
  database.records[0] = &oid;
  std::vector<BYTE> record = kRecord;
  record[12] = 0;
  ByteStream stream(record);
  const auto reltn = Valid('a');
  reltn->Load(&stream, &database);
  EXPECT_EQ(reltn->GetReltnOID(), nullptr);
  EXPECT_EQ(Saved(*reltn), record);
}

TEST(RelationStream, ShortRecordChangesNothing) {
  OID oid(0, 0, 5, nullptr);
  const auto reltn = Valid('a');
  reltn->SetReltnOID(&oid);
  const std::vector<BYTE> before = Saved(*reltn);
  for (std::size_t length = 0; length < kRecord.size(); ++length) {
    ByteStream stream(
        std::vector<BYTE>(kRecord.begin(), kRecord.begin() + static_cast<std::ptrdiff_t>(length)));
    EXPECT_THROW(reltn->Load(&stream, nullptr), CAtlException) << length;
    EXPECT_EQ(Saved(*reltn), before) << length;
  }
}

}  // namespace
