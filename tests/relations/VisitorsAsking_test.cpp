// The visitors that gather: what a relation refers to, who refers to an object, and by what.
#include "platform/geometry/GeBox.h"
#include "tests/relations/VisitorSupport.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/relations/CZReltnRecordObjInReltns.h"
#include "zdm/relations/ZReltnVisitorIsDirectTo.h"
#include "zdm/relations/ZReltnVisitorRecord.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(RecordVisitor, GathersTargetsInTheOrderOfTheWalk) {
  const Objects objects(7);
  auto* compound = new Compound;
  const auto reltn = zdm::Attached<IZRelation>(compound);
  compound->inner = ReltnTo(objects[3]);
  compound->innerColl = MakeReltns("");
  compound->innerColl->AddTail(ReltnTo(objects[2]));
  compound->innerColl->AddTail(ReltnTo(nullptr));
  const auto invalid = ReltnTo(objects[5]);
  invalid->ClearReltnStatus(ZRS_VALID);
  compound->innerColl->AddTail(invalid);
  compound->innerColl->AddTail(ReltnTo(objects[3]));
  PID path(1);
  path.OIDs = {objects.Record(6)};
  CID cid(&path, &path, objects.Record(1));
  compound->uid.SetCID(&cid);
  compound->path = &path;
  const auto visitor = zdm::CreateAs<IZReltnRecord>(zdm::ClassRow<ZReltnVisitorRecord>::kClassID);
  const auto out = NewObjColl();
  visitor->GetRecordObjects(reltn, out);
  EXPECT_EQ(NumbersIn(*out), "3 2 3 1") << "paths and invalid elements are not followed";
  visitor->GetRecordObjects(ReltnTo(objects[7]), out);
  EXPECT_EQ(NumbersIn(*out), "3 2 3 1 7") << "what was recorded stays";
  OID unbound(0, 0, 9, nullptr);
  const auto toNothing = ReltnTo(nullptr);
  toNothing->SetReltnOID(&unbound);
  visitor->GetRecordObjects(toNothing, out);
  visitor->GetRecordObjects(nullptr, out);
  visitor->GetRecordObjects(reltn, nullptr);
  EXPECT_EQ(NumbersIn(*out), "3 2 3 1 7");
}

/// What of object 1 leads to object 2, by the kind of reference.
class Leading : public testing::Test {
 protected:
  Leading() : objects(3) {
    path.OIDs = {objects.Record(3), nullptr, objects.Record(2)};
    away.OIDs = {objects.Record(3)};
  }

  bool IsDirect(eZRelation selector) {
    const auto visitor =
        zdm::CreateAs<IZReltnIsDirectTo>(zdm::ClassRow<ZReltnVisitorIsDirectTo>::kClassID);
    visitor->Initialize(selector, objects[2]);
    return objects[1]->VisitReferences(objects[1], visitor);
  }

  const Objects objects;
  PID path{1};
  PID away{2};
};

TEST_F(Leading, RecordsCountByTargetAndBothPaths) {
  Compound* compound = nullptr;
  objects.Compose(1, compound);
  const struct {
    const char* what;
    CID cid;
    PID* path;
    bool direct;
  } rows[] = {{"target", CID(nullptr, nullptr, objects.Record(2)), nullptr, true},
              {"another target", CID(nullptr, nullptr, objects.Record(3)), nullptr, false},
              {"reference path", CID(nullptr, &path, nullptr), nullptr, true},
              {"own path", CID(&path, nullptr, objects.Record(3)), nullptr, true},
              {"other paths", CID(&away, &away, nullptr), nullptr, false},
              {"path", CID(), &path, true},
              {"another path", CID(), &away, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    CID cid = row.cid;
    compound->uid.SetCID(&cid);
    compound->path = row.path;
    EXPECT_EQ(IsDirect(ZR_ALL), row.direct);
  }
}

TEST_F(Leading, RelationsCountWhenTheLooseTestSelectsThemAndWhatHoldsThem) {
  const struct {
    bool outerDiffuses;
    bool innerDiffuses;
    ULONG selector;
    bool direct;
  } rows[] = {{true, true, ZR_DIFFUSIBLE, true},
              {true, true, ZR_NONDIFFUSIBLE, false},
              {true, false, ZR_DIFFUSIBLE, false},
              {false, true, ZR_NONDIFFUSIBLE, false},
              {false, false, ZR_NONDIFFUSIBLE, true},
              {true, false, ZR_ALL, true},
              {true, false, 0x1, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.selector);
    if (IZReltnColl* former = objects[1]->GetReltnColl()) former->RemoveAll();
    Compound* compound = nullptr;
    objects.Compose(1, compound)->SetReltnDiffusible(row.outerDiffuses);
    compound->inner = ReltnTo(objects[2]);
    compound->inner->SetReltnDiffusible(row.innerDiffuses);
    EXPECT_EQ(IsDirect(static_cast<eZRelation>(row.selector)), row.direct);
  }
}

TEST_F(Leading, OwnersInvalidRelationsAndFartherObjectsDoNotCount) {
  objects[1]->SetOwner(objects[2]);
  objects.Refer(1, 2)->ClearReltnStatus(ZRS_VALID);
  objects.Refer(1, 3);
  objects.Refer(3, 2);
  EXPECT_FALSE(IsDirect(ZR_ALL));
  ZReltnVisitorIsDirectTo none;
  none.Initialize(ZR_ALL, nullptr);
  objects.Refer(1, 0);
  EXPECT_FALSE(objects[1]->VisitReferences(nullptr, &none)) << "no target is not the null one";
}

/// Relations of object 1 are named; what is recorded is read as letters.
class Recording : public Leading {
 protected:
  IZRelation* Name(IZRelation* reltn, char name) {
    reltn->SetReltnTag(name);
    return reltn;
  }
  void Record(IZReltnColl* out, eZRelation selector = ZR_ALL) {
    recorder->Initialize(selector, objects[2], out);
    EXPECT_FALSE(objects[1]->VisitReferences(nullptr, recorder));
  }
  IZReltnColl* Own() { return zdm::ViewAs<IZReltnColl>(recorder.Get()); }

  const ZRefPtr<IZReltnRecordObjInReltns> recorder =
      zdm::CreateAs<IZReltnRecordObjInReltns>(zdm::ClassRow<CZReltnRecordObjInReltns>::kClassID);
};

TEST_F(Recording, AppendsTheRelationsThatLeadToTheTarget) {
  Name(objects.Refer(1, 2), 'a');
  Name(objects.Refer(1, 3), 'b');
  Name(objects.Refer(1, 2, true), 'c');
  Compound* compound = nullptr;
  Name(objects.Compose(1, compound), 'd');
  compound->inner = ReltnTo(objects[2]);
  Name(compound->inner, 'e');
  compound->innerColl = MakeReltns("f");
  zdm::ViewAs<IZSingleReltn>(compound->innerColl->GetHead())->SetReltnObj(objects[2]);
  compound->path = &path;
  Compound* byRecord = nullptr;
  Name(objects.Compose(1, byRecord), 'g');
  CID cid(&path, &path, objects.Record(2));
  byRecord->uid.SetCID(&cid);

  const struct {
    eZRelation selector;
    const char* recorded;
  } rows[] = {{ZR_ALL, "acefd"}, {ZR_DIFFUSIBLE, "c"}, {ZR_NONDIFFUSIBLE, "aefd"}};
  for (const auto& row : rows) {
    const auto out = MakeReltns("");
    Record(out, row.selector);
    EXPECT_EQ(LettersIn(*out), row.recorded) << "nested ones first, reference records not asked";
    Record(out, row.selector);
    EXPECT_EQ(LettersIn(*out), std::string(row.recorded) + row.recorded);
  }
  EXPECT_TRUE(Own()->IsEmpty());
  Record(nullptr);
  EXPECT_EQ(LettersIn(*Own()), "acefd");
}

TEST_F(Recording, EndsWhereTheReceiverIsWalked) {
  Name(objects.Refer(1, 2), 'a');
  Name(objects.Refer(1, 2), 'b');
  IZReltnColl* relations = objects[1]->GetReltnColl();
  Record(relations);
  EXPECT_EQ(LettersIn(*relations), "abab");
  EXPECT_FALSE(recorder->Visit(nullptr, objects[1], relations));
  EXPECT_EQ(LettersIn(*relations), "abababab");
  recorder->Initialize(ZR_ALL, objects[2], Own());
  EXPECT_FALSE(recorder->Visit(nullptr, objects[1], relations));
  EXPECT_EQ(LettersIn(*Own()), "abababab") << "itself as the receiver: its own list";
  EXPECT_FALSE(recorder->Visit(nullptr, objects[1], Own()));
  EXPECT_EQ(LettersIn(*Own()), "abababab");
  EXPECT_EQ(recorder->GetReferenceCount(), 1u);
}

TEST_F(Recording, SharesElementsAndFieldsWithCopies) {
  Name(objects.Refer(1, 2), 'a');
  CZReltnRecordObjInReltns source;
  source.Initialize(ZR_NONDIFFUSIBLE, objects[2], nullptr);
  objects[1]->VisitReferences(nullptr, &source);
  CZReltnRecordObjInReltns copy(source);
  EXPECT_EQ(copy.GetHead(), source.GetHead());
  objects[1]->VisitReferences(nullptr, &copy);
  EXPECT_EQ(LettersIn(copy), "aa");
  source = copy;
  source = *&source;
  EXPECT_EQ(LettersIn(source), "aa");
  copy.Initialize(ZR_ALL, objects[2], &source);
  source = copy;
  EXPECT_EQ(source.GetReferenceCount(), 2u) << "held by the copy, not by itself";
}

TEST_F(Recording, IsACollectionThatPassesLittleOn) {
  auto* shape = new Shape;
  const auto held = zdm::Attached<IZRelation>(shape);
  shape->box[3] = 5;
  CZReltnRecordObjInReltns coll;
  coll.AddTail(held);
  coll.AddTail(zdm::MakeObject<IZObject, Stranger>());
  const auto invalid = zdm::MakeObject<IZRelation, Shape>();
  invalid->ClearReltnStatus(ZRS_VALID);
  coll.AddTail(invalid);
  IZRelation& reltn = coll;

  reltn.SetReltnStatus(0x1);
  reltn.Update(nullptr, nullptr);
  reltn.CopyFrom(MakeReltns("xyz"));
  reltn.SetVisibility({}, false, nullptr);
  EXPECT_EQ(coll.GetCount(), 3);
  EXPECT_EQ(held->GetReltnStatus(), ZRS_VALID);
  EXPECT_EQ(shape->updates, 0);
  EXPECT_TRUE(shape->visible);
  EXPECT_EQ(reltn.GetReltnStatus(), 0);
  EXPECT_FALSE(reltn.JudgeSame(&reltn));

  reltn.SetElementStatus(0x3);
  EXPECT_TRUE(held->JudgeReltnStatus(0x3));
  EXPECT_TRUE(invalid->JudgeReltnStatus(0x3));
  reltn.ClearElementStatus(0x1);
  EXPECT_EQ(held->GetReltnStatus(), ZRS_VALID | 0x2);
  Lookup database;
  reltn.AssertValid(&database);
  EXPECT_EQ(shape->validations, 1);
  EXPECT_EQ(shape->validatedFor, nullptr) << "asked without the document";

  double box[6];
  reltn.GetBox(box, nullptr, nullptr);
  EXPECT_EQ(box[3], 1e20) << "a box of its own, not the elements'";
  GeBox bounds;
  coll.UnionElementBoxes(&bounds, nullptr);
  bounds.GetBox(box);
  EXPECT_EQ(box[3], 5);
}

TEST_F(Recording, IsSavedLoadedAndClonedAsAPlainCollection) {
  Name(objects.Refer(1, 2), 'a');
  Record(nullptr);
  const auto plain = MakeReltns("");
  plain->AddTailColl(Own());
  EXPECT_EQ(Saved(*Own()), Saved(*plain));
  ByteStream stream(Saved(*Own()));
  Own()->Load(&stream, nullptr);
  EXPECT_EQ(LettersIn(*Own()), "aa");
  for (const bool deep : {false, true}) {
    ZRefPtr<IZReltnColl> clone;
    Own()->Clone(clone.Out(), deep);
    EXPECT_TRUE(clone->IsA(ZInterface<IZReltnCollector>::ID()));
    EXPECT_EQ(LettersIn(*clone), "aa");
    EXPECT_EQ(clone->GetHead() == Own()->GetHead(), !deep);
  }
}

}  // namespace
