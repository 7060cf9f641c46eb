// The visitors that spread status bits over a graph: deduce and diffuse.
#include "tests/relations/VisitorSupport.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/relations/ZReltnVisitorDeduce.h"
#include "zdm/relations/ZReltnVisitorDiffuse.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

namespace {

using namespace zdm::test;

/// Objects and how they are tied: "1>2" refers, "1=2" refers by a diffusible relation, "1^2" is
/// owned by 2.
Objects MakeGraph(LONG count, const std::string& ties) {
  Objects objects(count);
  std::istringstream words(ties);
  char tie = 0;
  for (LONG from = 0, to = 0; words >> from >> tie >> to;) {
    if (tie == '^') {
      objects[from]->SetOwner(objects[to]);
    } else {
      objects.Refer(from, to, tie == '=');
    }
  }
  return objects;
}

TEST(Deduce, MarksWhatDependsOnAffectedObjects) {
  const struct {
    const char* what;
    const char* ties;
    LONG affected;
    LONG withoutOption;
    bool hasRoot;
    bool answer;
    const char* affectedAfter;
    const char* visitedAfter;
  } rows[] = {
      {"chain", "1>2 2>3", 3, 0, true, true, "1 2 3", "1 2"},
      {"chain to nothing", "1>2 2>3", 0, 0, true, false, "", "1 2 3"},
      {"ring with a way out", "1>2 2>1 2>3", 3, 0, true, true, "1 2 3", "1 2"},
      {"independent before dependent", "1>2 1>3 3>4", 4, 0, true, true, "1 3 4", "1 2 3"},
      {"the first dependency ends the walk", "1>3 1>2 3>4 2>4", 4, 0, true, true, "1 3 4", "1 3"},
      {"the start is affected", "1>2", 1, 0, true, true, "1", ""},
      {"owned, its references do not count", "1>2 2>3 2^4", 3, 2, true, false, "3", "1 2"},
      {"no owner, its references do not count", "1>2 2>3", 3, 2, true, true, "1 2 3", "1 2"},
      {"neither owner nor root", "1>2 2>3", 3, 2, false, false, "3", "1 2"},
      {"without root", "1>2 2>3", 3, 0, false, true, "1 2 3", "1 2"},
      {"the start does not count and is owned", "1>2 1^4", 2, 1, true, true, "2", "1"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Objects objects = MakeGraph(4, row.ties);
    if (row.affected != 0) objects[row.affected]->SetStatus(ZOS_AFFECTED);
    if (row.withoutOption != 0) {
      objects[row.withoutOption]->ClearOptionAllowed(zdm::kReferencesCount);
    }
    const auto visitor = zdm::CreateAs<IZReltnDeduce>(zdm::ClassRow<ZReltnVisitorDeduce>::kClassID);
    EXPECT_EQ(objects[1]->VisitReferences(row.hasRoot ? objects[1] : nullptr, visitor), row.answer);
    EXPECT_EQ(objects.With(ZOS_AFFECTED), row.affectedAfter);
    EXPECT_EQ(objects.With(ZOS_DEDUCEVISITED), row.visitedAfter);
  }
}

TEST(Diffuse, ReachesWhatDiffusibleRelationsAndOwnersLeadTo) {
  const struct {
    const char* what;
    const char* ties;
    bool upward;
    const char* reached;
  } rows[] = {{"by diffusible relations only", "1=2 1>3", false, "1 2"},
              {"owners", "1=2 1^4 2^5 4^6 5^6", true, "1 2 4 5 6"},
              {"no owners", "1=2 1^4 2^5 4^6 5^6", false, "1 2"},
              {"what owners refer to", "1^2 2=3 3^4", true, "1 2 3 4"},
              {"ring of owners", "1^2 2^3 3^1", true, "1 2 3"},
              {"diamond", "1=2 1=3 2=4 3=4", false, "1 2 3 4"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Objects objects = MakeGraph(6, row.ties);
    ZReltnVisitorDiffuse visitor;
    visitor.Initialize(40, row.upward);
    EXPECT_FALSE(objects[1]->VisitReferences(nullptr, &visitor));
    EXPECT_EQ(objects.With(40), row.reached);
    EXPECT_TRUE(objects[1]->VisitReferences(nullptr, &visitor)) << "reached before";
  }
}

TEST(Spreading, StartsAfreshAfterARelationThrew) {
  const Objects objects = MakeGraph(4, "1=2 2=3");
  Compound* thrower = nullptr;
  objects.Compose(2, thrower)->SetReltnDiffusible(true);
  objects.Refer(2, 4, true);
  thrower->onAccept = [] { throw std::runtime_error("no"); };
  ZReltnVisitorDiffuse diffuse;
  ZReltnVisitorDeduce deduce;
  EXPECT_THROW(objects[1]->VisitReferences(objects[1], &diffuse), std::runtime_error);
  EXPECT_THROW(objects[1]->VisitReferences(objects[1], &deduce), std::runtime_error);
  const Objects others = MakeGraph(3, "1=2 2=3");
  others[3]->SetStatus(ZOS_AFFECTED);
  others[1]->VisitReferences(others[1], &diffuse);
  EXPECT_TRUE(others[1]->VisitReferences(others[1], &deduce));
  EXPECT_EQ(others.With(ZOS_DIFFUSEMARK), "1 2 3");
  EXPECT_EQ(others.With(ZOS_AFFECTED), "1 2 3");
  EXPECT_EQ(objects.With(ZOS_DIFFUSEMARK), "1 2") << "3 and 4 were still to come";
}

// Against the same walks written as recursions.

template <class Interface>
class ByRecursion : public ZReltnVisitor<Interface> {
 public:
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation*, PID** pid) override {
    if (*pid == nullptr) return false;
    for (OID* oid : (*pid)->OIDs) {
      if (this->MapOID(root, owner, nullptr, &oid)) return true;
    }
    return false;
  }
};

class DeduceByRecursion : public ByRecursion<IZReltnDeduce> {
 public:
  bool Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) override {
    for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
      if (this->Visit(root, owner, coll->GetNext(pos))) return true;
    }
    return false;
  }
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn != nullptr && reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) override {
    if (owner->JudgeOptionAllowed(0x0020000000000000)) {
      if (owner->JudgeStatus(4) || owner->JudgeStatus(5)) return true;
      owner->SetStatus(5);
      return false;
    }
    owner->SetStatus(5);
    return !(ownerOid == nullptr && root != nullptr);
  }
  using ByRecursion::Visit;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation*, OID** oid) override {
    OID* target = *oid;
    if (target == nullptr) return false;
    if (!target->JudgeStatus(4)) {
      if (target->JudgeStatus(5) || target->Object == nullptr) return false;
      target->Object->VisitReferences(root, this);
      if (!target->JudgeStatus(4)) return false;
    }
    owner->SetStatus(4);
    if (root != nullptr) root->SetStatus(4);
    return true;
  }
};

class DiffuseByRecursion : public ByRecursion<IZReltnDiffuse> {
 public:
  using ByRecursion::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    if (reltn != nullptr && reltn->IsReltnDiffusible()) reltn->Accept(root, owner, this);
    return false;
  }
  bool Visit(IZDMObject*, IZDMObject* owner, OID* ownerOid) override {
    if (owner->JudgeStatus(status_)) return true;
    owner->SetStatus(status_);
    if (upward_ && ownerOid != nullptr) ownerOid->Object->VisitReferences(ownerOid->Object, this);
    return false;
  }
  bool MapOID(IZDMObject* root, IZDMObject*, IZRelation*, OID** oid) override {
    if (*oid != nullptr && (*oid)->Object != nullptr) (*oid)->Object->VisitReferences(root, this);
    return false;
  }
  void Initialize(LONG status, bool upward) override {
    status_ = status;
    upward_ = upward;
  }
  void get_Status(LONG* out) override { *out = status_; }

 private:
  LONG status_ = 3;
  bool upward_ = true;
};

/// Writes down which objects are entered, and from which root.
template <class Visitor>
class Logged : public Visitor {
 public:
  using Visitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, OID* ownerOid) override {
    const std::size_t before = log.size();
    log += std::to_string(root != nullptr ? root->GetID() : 0) + ":" +
           std::to_string(owner->GetID()) + " ";
    const bool isOver = Visitor::Visit(root, owner, ownerOid);
    if (isOver) log.resize(before);
    return isOver;
  }

  std::string log;
};

/// A graph of few objects with references of every kind, marked and owned at random.
class RandomGraph {
 public:
  explicit RandomGraph(unsigned seed) : random_(seed), objects(2 + Pick(7)) {
    for (LONG id = 1; id <= objects.GetCount(); ++id) {
      if (Pick(3) == 0) objects[id]->SetOwner(Any());
      if (Pick(4) == 0) objects[id]->ClearOptionAllowed(zdm::kReferencesCount);
      if (Pick(7) == 0) objects[id]->SetStatus(ZOS_AFFECTED);
      if (Pick(12) == 0) objects[id]->SetStatus(ZOS_DEDUCEVISITED);
      for (LONG count = Pick(4); count > 0; --count) AddReference(id);
    }
    for (LONG id = 1; id <= objects.GetCount(); ++id) before_.push_back(objects.Record(id)->Status);
  }

  /// What the walks from four random starts enter, answer and leave.
  template <class Visitor>
  std::string Walk(Visitor& visitor) {
    for (LONG id = 1; id <= objects.GetCount(); ++id) {
      objects.Record(id)->Status = before_[static_cast<std::size_t>(id - 1)];
    }
    std::mt19937 starts(1);
    for (int i = 0; i < 4; ++i) {
      IZDMObject* start = objects[1 + Below(starts, objects.GetCount())];
      IZDMObject* roots[] = {start, start, nullptr, objects[1]};
      const bool answer = start->VisitReferences(roots[Below(starts, 4)], &visitor);
      visitor.log += answer ? "true; " : "false; ";
    }
    return visitor.log + "affected " + objects.With(ZOS_AFFECTED) + " visited " +
           objects.With(ZOS_DEDUCEVISITED) + " reached " + objects.With(ZOS_DIFFUSEMARK);
  }

 private:
  static LONG Below(std::mt19937& random, LONG count) {
    return static_cast<LONG>(random() % static_cast<ULONG>(count));
  }
  LONG Pick(LONG count) { return Below(random_, count); }
  IZDMObject* Any() { return objects[1 + Pick(objects.GetCount())]; }

  PID* AnyPath() {
    if (Pick(2) == 0) return nullptr;
    paths_.push_back(std::make_unique<PID>(1));
    for (LONG count = Pick(3); count > 0; --count) paths_.back()->OIDs.push_back(Any()->GetOID());
    return paths_.back().get();
  }

  ZRefPtr<IZRelation> AnyPlain() {
    auto reltn = ReltnTo(Pick(8) == 0 ? nullptr : Any());
    reltn->SetReltnDiffusible(Pick(3) != 0);
    if (Pick(6) == 0) reltn->ClearReltnStatus(ZRS_VALID);
    return reltn.Get();
  }

  void AddReference(LONG from) {
    if (Pick(3) != 0) return objects[from]->AddRelation(AnyPlain()->GetIZObject());
    Compound* compound = nullptr;
    objects.Compose(from, compound)->SetReltnDiffusible(Pick(3) != 0);
    if (Pick(2) == 0) compound->inner = AnyPlain();
    if (Pick(2) == 0) {
      compound->innerColl = MakeReltns("-");
      for (LONG count = Pick(3); count > 0; --count) compound->innerColl->AddTail(AnyPlain());
    }
    CID cid(AnyPath(), AnyPath(), Pick(2) == 0 ? Any()->GetOID() : nullptr);
    compound->uid.SetCID(&cid);
    compound->path = AnyPath();
  }

  std::mt19937 random_;
  std::vector<std::unique_ptr<PID>> paths_;
  std::vector<std::bitset<64>> before_;

 public:
  const Objects objects;
};

TEST(Spreading, GoesTheWayOfTheRecursion) {
  std::size_t affected = 0;
  for (unsigned seed = 0; seed < 10000; ++seed) {
    RandomGraph graph(seed);
    Logged<DeduceByRecursion> literalDeduce;
    Logged<ZReltnVisitorDeduce> deduce;
    const std::string deduced = graph.Walk(literalDeduce);
    ASSERT_EQ(graph.Walk(deduce), deduced) << "seed " << seed;
    affected += deduced.find("true") != std::string::npos ? 1U : 0U;
    for (const bool upward : {false, true}) {
      Logged<DiffuseByRecursion> literalDiffuse;
      Logged<ZReltnVisitorDiffuse> diffuse;
      literalDiffuse.Initialize(ZOS_DIFFUSEMARK, upward);
      diffuse.Initialize(ZOS_DIFFUSEMARK, upward);
      const std::string diffused = graph.Walk(literalDiffuse);
      ASSERT_EQ(graph.Walk(diffuse), diffused) << "seed " << seed << " upward " << upward;
    }
  }
  EXPECT_GT(affected, 3000u) << "the graphs are worth the walk";
}

/// Offers its relations without its owner, as an embedded object may, and never answers true.
class Silent : public CZDMPlainObject {
 public:
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override {
    if (IZReltnColl* relations = GetReltnColl()) relations->Accept(root, this, visitor);
    return false;
  }
};

TEST(Spreading, EndsAtObjectsThatDoNotOfferTheirOwner) {
  TestDatabase db;
  const auto a = zdm::MakeObject<IZDMObject, Silent>();
  const auto b = zdm::MakeObject<IZDMObject, Silent>();
  db.Add(a);
  db.Add(b);
  for (const auto& [from, to] : {std::pair(a, b), std::pair(b, a), std::pair(b, b)}) {
    const auto relation = RelationTo(to);
    relation->SetReltnDiffusible(true);
    from->AddRelation(relation);
  }
  ZReltnVisitorDeduce deduce;
  a->VisitReferences(a, &deduce);
  EXPECT_TRUE(b->JudgeStatus(ZOS_DEDUCEVISITED));
  EXPECT_FALSE(a->JudgeStatus(ZOS_AFFECTED));
  ZReltnVisitorDiffuse diffuse;
  a->VisitReferences(a, &diffuse);
  EXPECT_TRUE(a->JudgeStatus(ZOS_DIFFUSEMARK));
  EXPECT_TRUE(b->JudgeStatus(ZOS_DIFFUSEMARK));
}

// A million objects in a row.

/// Refers to one object without a relation of its own.
class Link : public Thing {
 public:
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override {
    return visitor->Visit(root, this, GetOwnerOID()) || visitor->MapOID(root, this, nullptr, &next);
  }

  OID* next = nullptr;
};

class LongChain : public testing::Test {
 protected:
  static constexpr std::size_t kCount = 1000000;

  std::size_t With(LONG bit) const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < kCount; ++i) count += links[i].GetOID()->JudgeStatus(bit) ? 1U : 0U;
    return count;
  }

  const std::unique_ptr<Link[]> links{new Link[kCount]};
};

TEST_F(LongChain, IsDeducedAndDiffusedOnABoundedStack) {
  for (std::size_t i = 0; i + 1 < kCount; ++i) links[i].next = links[i + 1].GetOID();
  ZReltnVisitorDeduce deduce;
  links[kCount - 1].SetStatus(ZOS_AFFECTED);
  EXPECT_TRUE(links[0].VisitReferences(&links[0], &deduce));
  EXPECT_EQ(With(ZOS_AFFECTED), kCount);
  ZReltnVisitorDiffuse diffuse;
  EXPECT_FALSE(links[0].VisitReferences(&links[0], &diffuse));
  EXPECT_EQ(With(ZOS_DIFFUSEMARK), kCount);
}

TEST_F(LongChain, OfOwnersIsClimbedOnABoundedStack) {
  for (std::size_t i = 0; i < kCount; ++i) links[i].SetOwner(&links[(i + 1) % kCount]);
  ZReltnVisitorDiffuse diffuse;
  EXPECT_FALSE(links[0].VisitReferences(nullptr, &diffuse));
  EXPECT_EQ(With(ZOS_DIFFUSEMARK), kCount);
}

}  // namespace
