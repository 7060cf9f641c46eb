// The relation bases: status word, target, copies and stream forms.
#include "platform/geometry/GeBox.h"
#include "platform/geometry/SubID.h"
#include "tests/relations/ReltnSupport.h"
#include "tests/support/Cuts.h"
#include "zdm/identity/OID.h"

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
  EXPECT_FALSE(reltn->IsReltnDiffusible());
  reltn->SetReltnDiffusible(true);
  EXPECT_TRUE(reltn->JudgeReltnStatus(ZRS_DIFFUSIBLE) && reltn->IsReltnDiffusible());
}

TEST(Relation, CloneIsANewObjectOfTheClassWithCountZeroOrOne) {
  OID oid(0, 0, 7, nullptr);
  PlainReltn reltn;
  IZRelation* plain = nullptr;
  IZSingleReltn* single = nullptr;
  reltn.SetReltnTag('a');
  reltn.ClearReltnStatus(ZRS_VALID);
  reltn.SetReltnOID(&oid);
  reltn.Clone(&plain);
  reltn.Clone(&single);
  IZObject* raw = static_cast<IZSingleReltn&>(reltn).Clone();
  ASSERT_NE(raw, nullptr);
  EXPECT_EQ(raw->GetReferenceCount(), 0u);
  const ZRefPtr<IZSingleReltn> copies[] = {raw, zdm::Attached<IZObject>(plain).Get(),
                                           zdm::Attached<IZObject>(single).Get()};
  for (const auto& copy : copies) {
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetReferenceCount(), 1u);
    EXPECT_EQ(copy->GetReltnStatus(), 0);
    EXPECT_EQ(copy->GetReltnTag(), 'a');
    EXPECT_EQ(copy->GetReltnOID(), &oid);
  }
  EXPECT_EQ((zdm::MakeObject<IZRelation, Nameless>()->Clone()), nullptr) << "not in the factory";
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
  EXPECT_TRUE(reltn.IsVisible(zdm::kCategoryDraw, nullptr) && reltn.Reserved41());
  EXPECT_EQ(reltn.GetDisplayValue(), 0xFFFFFFFFu);
  EXPECT_FALSE(reltn.JudgeStatus(2) || reltn.IsDumpRef());
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

// status, tag -2, spare, target
const Bytes kRecord = Hex("01008040 FEFFFFFF DDCCBBAA 07000000");

TEST(RelationStream, CarriesStatusTagAndSpareWord) {
  const Bytes record = Cut(kRecord, 12);
  ByteStream stream(record);
  const auto shape = zdm::MakeObject<IZRelation, Shape>();
  EXPECT_EQ(Saved(*shape), Hex("00008000 FFFFFFFF 00000000"));
  shape->Load(&stream, nullptr);
  EXPECT_EQ(shape->GetReltnStatus(), 0x40800001);
  EXPECT_EQ(shape->GetReltnTag(), -2);
  EXPECT_EQ(Saved(*shape), record);
}

TEST(RelationStream, LooksTheTargetUp) {
  OID oid(0, 0, 7, nullptr);
  Lookup known;
  known.records = {{7, &oid}, {0, &oid}};
  Lookup empty;
  const struct {
    const char* what;
    IZDatabase* database;
    BYTE id;
    OID* target;
  } rows[] = {{"listed", &known, 7, &oid},
              {"not listed", &empty, 7, nullptr},
              {"no document", nullptr, 7, nullptr},
              {"ID 0", &known, 0, nullptr}};
  for (const auto& row : rows) {
    Bytes record = kRecord;
    record[12] = row.id;
    ByteStream stream(record);
    const auto reltn = Valid('a');
    OID former(0, 0, 9, nullptr);
    reltn->SetReltnOID(&former);
    reltn->Load(&stream, row.database);
    EXPECT_EQ(reltn->GetReltnOID(), row.target) << row.what;
    if (row.target == nullptr) record[12] = 0;
    EXPECT_EQ(Saved(*reltn), record) << row.what;
  }
}

TEST(RelationStream, ShortRecordChangesNothing) {
  OID oid(0, 0, 5, nullptr);
  const auto reltn = Valid('a');
  reltn->SetReltnOID(&oid);
  const Bytes before = Saved(*reltn);
  ExpectShortStreamsThrow(kRecord, [&](IZStream* stream) { reltn->Load(stream, nullptr); });
  EXPECT_EQ(Saved(*reltn), before);
}

}  // namespace
