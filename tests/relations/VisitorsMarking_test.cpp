// The visitors that change relations: status and self-containment.
#include "tests/relations/VisitorSupport.h"
#include "tests/support/Thrown.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/relations/ZReltnVisitorSelfContained.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace zdm::test;

constexpr LONG kOwnBit = 0x1;
constexpr LONG kMemberBit = 15;

/// The letters of the relations of `object` that hold all `bits`.
std::string Holding(IZDMObject* object, LONG bits) {
  std::string letters;
  IZReltnColl* coll = object->GetReltnColl();
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    IZRelation* reltn = coll->GetNext(pos);
    if (reltn->JudgeReltnStatus(bits)) letters += static_cast<char>(reltn->GetReltnTag());
  }
  return letters;
}

/// An object with the relations a (diffusible), b (invalid and diffusible), c (ZR_ALL's bit), d.
ZRefPtr<IZDMObject> WithFourRelations() {
  const Objects made(1);
  IZDMObject* object = made[1];
  const auto a = Valid('a');
  const auto b = Invalid('b');
  const auto c = Valid('c');
  const auto d = Valid('d');
  a->SetReltnDiffusible(true);
  b->SetReltnDiffusible(true);
  c->SetReltnStatus(ZR_ALL | kOwnBit);
  for (IZRelation* reltn : {a.Get(), b.Get(), c.Get(), d.Get()}) object->AddRelation(reltn);
  return object;
}

TEST(StatusVisitor, ChangesTheValidRelationsThatTheStrictTestSelects) {
  const struct {
    ULONG selector;
    const char* changed;
  } rows[] = {{ZR_DIFFUSIBLE, "a"}, {ZR_NONDIFFUSIBLE, "cd"},     {ZR_ALL, "c"},
              {kOwnBit, "c"},       {ZR_ALL | ZR_DIFFUSIBLE, ""}, {0, "acd"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.selector);
    const auto selector = static_cast<eZRelation>(row.selector);
    const auto object = WithFourRelations();
    ZReltnVisitorStatus visitor;
    visitor.Isolate(object.Get(), selector, true);
    EXPECT_EQ(Holding(object, ZRS_ISOLATED), row.changed);
    visitor.Initialize(selector, 0x6, true);
    EXPECT_FALSE(object->VisitReferences(nullptr, &visitor));
    EXPECT_EQ(Holding(object, 0x6), row.changed);
    visitor.Isolate(object.Get(), selector, false);
    EXPECT_EQ(Holding(object, ZRS_ISOLATED), "");
    EXPECT_EQ(Holding(object, 0x6), row.changed) << "the other bits stay";
  }
}

TEST(StatusVisitor, StaysAsIsolationLeftItAndCopiesItsFields) {
  const auto object = WithFourRelations();
  ZReltnVisitorStatus visitor;
  visitor.Isolate(static_cast<IZDMObject*>(nullptr), ZR_NONDIFFUSIBLE, true);
  ZReltnVisitorStatus assigned;
  EXPECT_FALSE(object->VisitReferences(nullptr, &assigned)) << "a new one has no bits to set";
  EXPECT_EQ(Holding(object, ZRS_VALID), "acd");
  assigned = ZReltnVisitorStatus(visitor);
  object->VisitReferences(nullptr, &assigned);
  EXPECT_EQ(Holding(object, ZRS_ISOLATED), "cd");
}

TEST(StatusVisitor, IsolatesEveryObjectOfACollectionButNotWhatRelationsHold) {
  const Objects objects(3);
  Compound* compound = nullptr;
  const auto outer = objects.Compose(1, compound);
  compound->inner = Valid('i');
  const auto second = objects.Refer(2, 1);
  const auto third = objects.Refer(3, 1);
  ZReltnVisitorStatus().Isolate(objects.Collect({1, 2}).Get(), ZR_NONDIFFUSIBLE, true);
  EXPECT_TRUE(outer->JudgeReltnStatus(ZRS_ISOLATED));
  EXPECT_TRUE(second->JudgeReltnStatus(ZRS_ISOLATED));
  EXPECT_FALSE(third->JudgeReltnStatus(ZRS_ISOLATED));
  EXPECT_FALSE(compound->inner->JudgeReltnStatus(ZRS_ISOLATED));
}

/// Object 1 holds one compound relation; 1 and 2 are the set, 3 and 4 are outside.
class SelfContained : public testing::Test {
 protected:
  void Run() { visitor->SelfContained(objects.Collect({1, 2})); }

  const ZRefPtr<IZReltnSelfContained> visitor =
      zdm::CreateAs<IZReltnSelfContained>(zdm::ClassRow<ZReltnVisitorSelfContained>::kClassID);
  Objects objects{4};
  Compound* compound = nullptr;
  ZRefPtr<IZRelation> reltn = objects.Compose(1, compound);
};

TEST_F(SelfContained, CutsRecordsAndPathsThatLeadOut) {
  PID inside(1), outside(2), empty(3), holed(4), outsideLater(5);
  inside.OIDs = {objects.Record(2)};
  outside.OIDs = {objects.Record(3), objects.Record(1)};
  holed.OIDs = {nullptr, objects.Record(3)};
  outsideLater.OIDs = {objects.Record(1), objects.Record(3)};
  const struct {
    const char* what;
    PID* self;
    PID* ref;
    LONG target;
    PID* path;
    bool stays;
  } rows[] = {{"target inside", nullptr, nullptr, 2, nullptr, true},
              {"target outside", nullptr, nullptr, 3, nullptr, false},
              {"no target", nullptr, nullptr, 0, nullptr, true},
              {"own path inside, target outside", &inside, nullptr, 3, nullptr, false},
              {"own path outside, target inside", &outside, nullptr, 2, nullptr, false},
              {"own path outside, no target", &outside, nullptr, 0, nullptr, false},
              {"reference path outside", nullptr, &outside, 2, nullptr, true},
              {"path inside", nullptr, nullptr, 0, &inside, true},
              {"path outside", nullptr, nullptr, 0, &outside, false},
              {"path that leaves later", nullptr, nullptr, 0, &outsideLater, true},
              {"empty path", nullptr, nullptr, 0, &empty, true},
              {"path without first record", nullptr, nullptr, 0, &holed, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    CID cid(row.self, row.ref, row.target != 0 ? objects.Record(row.target) : nullptr);
    compound->uid.SetCID(&cid);
    compound->path = row.path;
    reltn->SetReltnStatus(ZRS_VALID);
    Run();
    EXPECT_EQ(reltn->JudgeReltnStatus(ZRS_VALID), row.stays);
    EXPECT_EQ(compound->uid.CID->ReltnOID, cid.ReltnOID) << "nothing is rewritten";
    EXPECT_EQ(objects.With(kMemberBit), "");
  }
}

TEST_F(SelfContained, LooksIntoRelationsThatAreNotDiffusibleAndGoesOnAfterACut) {
  CID out(nullptr, nullptr, objects.Record(3));
  compound->uid.SetCID(&out);
  auto* nested = new Compound;
  compound->inner = zdm::Attached<IZRelation>(nested);
  nested->uid.SetCID(&out);
  Compound* second = nullptr;
  const auto secondReltn = objects.Compose(1, second);
  second->uid.SetCID(&out);
  Compound* diffusible = nullptr;
  const auto diffusibleReltn = objects.Compose(1, diffusible);
  diffusibleReltn->SetReltnDiffusible(true);
  diffusible->uid.SetCID(&out);
  const auto plain = objects.Refer(1, 3);
  Run();
  EXPECT_FALSE(compound->inner->JudgeReltnStatus(ZRS_VALID));
  EXPECT_FALSE(reltn->JudgeReltnStatus(ZRS_VALID)) << "asked although the inner one was cut";
  EXPECT_FALSE(secondReltn->JudgeReltnStatus(ZRS_VALID));
  EXPECT_TRUE(diffusibleReltn->JudgeReltnStatus(ZRS_VALID));
  EXPECT_TRUE(plain->JudgeReltnStatus(ZRS_VALID)) << "plain targets are not looked at";
}

TEST_F(SelfContained, WalksOnlyObjectsWhoseReferencesCount) {
  CID out(nullptr, nullptr, objects.Record(3));
  compound->uid.SetCID(&out);
  objects[1]->ClearOptionAllowed(zdm::kReferencesCount);
  Run();
  EXPECT_TRUE(reltn->JudgeReltnStatus(ZRS_VALID));
}

TEST_F(SelfContained, TakesMarkedObjectsForMembersAndLeavesMembersUnmarked) {
  CID marked(nullptr, nullptr, objects.Record(3));
  compound->uid.SetCID(&marked);
  objects[3]->SetStatus(kMemberBit);
  objects[1]->SetStatus(kMemberBit);
  Run();
  EXPECT_TRUE(reltn->JudgeReltnStatus(ZRS_VALID));
  EXPECT_EQ(objects.With(kMemberBit), "3");
}

TEST_F(SelfContained, LeavesNoMarkWhenARelationThrowsOrEmptiesTheSet) {
  compound->onAccept = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(Run(), std::runtime_error);
  EXPECT_EQ(objects.With(kMemberBit), "");
  const auto set = objects.Collect({1, 2});
  compound->onAccept = [&] { set->RemoveAll(); };
  visitor->SelfContained(set);
  EXPECT_EQ(objects.With(kMemberBit), "");
  visitor->SelfContained(nullptr);
  PID path(1);
  path.OIDs = {objects.Record(3)};
  PID* offered = &path;
  EXPECT_TRUE(visitor->MapPID(nullptr, objects[1], nullptr, &offered)) << "without a relation too";
}

}  // namespace
