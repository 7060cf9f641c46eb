// The defaults of visitors: how references are taken apart and offered. The visitor that every
// collection is: what it collects.
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/CID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/relations/ReltnSelector.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

struct Reference {
  OID target{0, 0, 1, nullptr};
  PID ref{2};
  PID self{3};
  CID cid{&self, &ref, &target};
};

TEST(VisitorDefaults, ShowTheValidElementsOfACollection) {
  Recorder visitor;
  const auto coll = MakeReltns("aB-c");
  coll->AddTail(MakeReltns("n"));  // nested: never valid
  EXPECT_FALSE(visitor.Visit(nullptr, nullptr, coll.Get()));
  EXPECT_EQ(visitor.words, "a c");
  EXPECT_FALSE(coll->Accept(nullptr, nullptr, &visitor));
  EXPECT_EQ(visitor.words, "a c a c");
  visitor.stopAt = "c";
  EXPECT_TRUE(visitor.Visit(nullptr, nullptr, coll.Get()));
  EXPECT_FALSE(visitor.Visit(nullptr, nullptr, static_cast<IZReltnColl*>(nullptr)));
}

TEST(VisitorDefaults, ReachTargetsOnlyThroughAnOverride) {
  OID oid(0, 0, 7, nullptr);
  const auto coll = MakeReltns("a");
  zdm::ViewAs<IZSingleReltn>(coll->GetHead())->SetReltnOID(&oid);
  Recorder visitor;
  visitor.Visit(nullptr, nullptr, coll.Get());
  EXPECT_EQ(visitor.words, "a");
  visitor.descends = true;
  visitor.Visit(nullptr, nullptr, coll.Get());
  EXPECT_EQ(visitor.words, "a a oid7");
}

TEST(VisitorDefaults, TakeACompoundReferenceApartInOrder) {
  const struct {
    const char* what;
    bool hasTarget, hasRef, hasSelf;
    const char* stopAt;
    const char* offered;
  } rows[] = {{"all", true, true, true, "", "oid1 pid2 pid3"},
              {"stopped by the target", true, true, true, "oid1", "oid1"},
              {"stopped by RefPID", true, true, true, "pid2", "oid1 pid2"},
              {"stopped by SelfPID", true, true, true, "pid3", "oid1 pid2 pid3"},
              {"no target", false, true, true, "", "pid2 pid3"},
              {"no RefPID", true, false, true, "", "oid1 pid3"},
              {"no SelfPID", true, true, false, "", "oid1 pid2"},
              {"nothing", false, false, false, "", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Reference reference;
    if (!row.hasTarget) reference.cid.ReltnOID = nullptr;
    if (!row.hasRef) reference.cid.RefPID = nullptr;
    if (!row.hasSelf) reference.cid.SelfPID = nullptr;
    Recorder visitor;
    visitor.stopAt = row.stopAt;
    const auto holder = Valid('h');
    EXPECT_EQ(visitor.MapCID(nullptr, nullptr, holder, &reference.cid), *row.stopAt != 0);
    EXPECT_EQ(visitor.words, row.offered);
    EXPECT_EQ(visitor.askedReltn, nullptr) << "offered without the relation";
  }
}

TEST(VisitorDefaults, KeepWhatTheVisitorStoresAlsoAfterFalse) {
  Reference reference;
  OID newOid(0, 0, 9, nullptr);
  PID newPid(9);
  Recorder visitor;
  visitor.newOid = &newOid;
  visitor.newPid = &newPid;
  EXPECT_FALSE(visitor.MapCID(nullptr, nullptr, nullptr, &reference.cid));
  EXPECT_EQ(visitor.words, "oid1 pid2 pid3") << "each field is offered once";
  EXPECT_EQ(reference.cid.ReltnOID, &newOid);
  EXPECT_EQ(reference.cid.RefPID, &newPid);
  EXPECT_EQ(reference.cid.SelfPID, &newPid);
}

TEST(VisitorDefaults, OfferTheCompoundPartOfAUid) {
  Reference reference;
  const auto root = zdm::MakeObject<IZDMObject, Thing>();
  const auto owner = zdm::MakeObject<IZDMObject, Thing>();
  const auto holder = Valid('h');
  Recorder visitor;
  UID uid;
  EXPECT_FALSE(visitor.MapUID(root, owner, holder, nullptr));
  EXPECT_FALSE(visitor.MapUID(root, owner, holder, &uid));
  uid.SetCID(&reference.cid);
  visitor.stopAt = "pid3";
  EXPECT_TRUE(visitor.MapUID(root, owner, holder, &uid));
  EXPECT_EQ(visitor.words, "oid1 pid2 pid3");
  EXPECT_EQ(visitor.askedRoot, root);
  EXPECT_EQ(visitor.askedOwner, owner);
  EXPECT_EQ(visitor.askedReltn, nullptr);
  EXPECT_FALSE(visitor.MapCID(root, owner, holder, nullptr));
}

TEST(Collector, SelectsStrictlyAndOthersLoosely) {
  const struct {
    LONG status;
    char letter;
  } kinds[] = {{0, 'p'}, {ZRS_DIFFUSIBLE, 'd'}, {0x1, 'o'}, {0x3, 't'}, {ZR_ALL, 'z'}};
  const auto source = MakeReltns("");
  for (const auto& kind : kinds) {
    const auto reltn = Valid(kind.letter);
    reltn->SetReltnStatus(kind.status);
    source->AddTail(reltn);
  }
  source->AddTail(Invalid('i'));
  const struct {
    ULONG selector;
    const char* collected;
    const char* loosely;
  } rows[] = {
      {ZR_ALL, "z", "pdotz"},   {ZR_DIFFUSIBLE, "d", "d"}, {ZR_NONDIFFUSIBLE, "potz", "potz"},
      {0x1, "ot", "pdotz"},     {0x3, "t", "pdotz"},       {0, "pdotz", "pdotz"},
      {0x80000001, "", "pdotz"}};
  for (const auto& row : rows) {
    const auto coll = MakeReltns("");
    auto* collector = zdm::ViewAs<IZReltnCollector>(coll);
    if (row.selector != ZR_ALL) collector->SetReltnType(static_cast<eZRelation>(row.selector));
    EXPECT_FALSE(collector->Visit(nullptr, nullptr, source.Get()));
    EXPECT_EQ(LettersIn(*coll), row.collected) << row.selector;
    EXPECT_FALSE(source->Accept(nullptr, nullptr, collector));
    EXPECT_EQ(LettersIn(*coll), std::string(row.collected) + row.collected) << "appended";
    std::string loosely;
    for (LONGLONG pos = source->GetValidHeadPosition(); pos != 0;) {
      IZRelation* reltn = source->GetValidNext(pos);
      if (zdm::SelectsLoosely(static_cast<eZRelation>(row.selector), *reltn)) {
        loosely += static_cast<char>(reltn->GetReltnTag());
      }
    }
    EXPECT_EQ(loosely, row.loosely) << row.selector;
  }
}

TEST(Collector, TakesInvalidRelationsShownOneByOneAndNothingOfItself) {
  const auto coll = MakeReltns("ab");
  auto* collector = zdm::ViewAs<IZReltnCollector>(coll);
  collector->SetReltnType(static_cast<eZRelation>(0));
  collector->Visit(nullptr, nullptr, static_cast<IZRelation*>(Invalid('i')));
  collector->Visit(nullptr, nullptr, static_cast<IZRelation*>(nullptr));
  collector->Visit(nullptr, nullptr, static_cast<IZReltnColl*>(nullptr));
  EXPECT_FALSE(coll->Accept(nullptr, nullptr, collector));
  EXPECT_FALSE(collector->Visit(nullptr, nullptr, coll.Get()));
  EXPECT_EQ(LettersIn(*coll), "abI");
}

}  // namespace
