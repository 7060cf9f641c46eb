// Asking a document what refers to what, and deleting from it.
#include "document/Document.h"

#include "document/Audit.h"
#include "document/Categorize.h"
#include "tests/document/DocumentSupport.h"
#include "tests/document/RandomDocument.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ObjectOptions.h"

#include <random>
#include <set>
#include <string>

using namespace zdm::test;
using zdm::Deletion;
using zdm::DeletionObstacle;
using zdm::Document;
using zdm::Reference;

namespace {

std::string TextOf(const std::vector<Reference>& references) {
  std::string text;
  for (const auto& [from, to, via, relation] : references) text += LinkOf(from, to, via) + ' ';
  return text;
}

TEST(References, AreNamedWithWhatHoldsThem) {
  auto document = Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
  IZDMObject* a = document.Add(OLESTR("a"), walls);
  IZDMObject* b = document.Add(OLESTR("b"), walls);
  walls->SetCurrent(b);
  document.Relate(a, b);
  document.Relate(a, walls);
  a->AddRelation(RelationTo(nullptr));
  EXPECT_EQ(TextOf(document.ReferencesOf(a)), "2>3r 2>1r ");
  EXPECT_EQ(TextOf(document.ReferencesOf(walls)), "1>3c ");
  EXPECT_EQ(TextOf(document.ReferencesTo(b)), "1>3c 2>3r ");
  a->GetReltnColl()->GetHead()->ClearReltnStatus(ZRS_VALID);
  EXPECT_EQ(TextOf(document.ReferencesTo(b)), "1>3c ");
}

TEST(DocumentCategory, IsOneAtATimeAndMadeOnce) {
  auto document = Document::Create();
  IZDMObject* wall = document.Add(OLESTR("Wall"));
  IZDMObject* door = document.Add(OLESTR("Door"));
  EXPECT_EQ(document.CategoryOf(wall), nullptr);
  IZCategory* walls = document.SetCategory(wall, 7, OLESTR("Walls"));
  EXPECT_EQ(walls->GetNumber(), 7u);
  EXPECT_EQ(NameOf(walls), "Walls");
  EXPECT_EQ(document.SetCategory(door, 7, OLESTR("Doors")), walls);
  EXPECT_EQ(NameOf(walls), "Walls");
  IZCategory* doors = document.SetCategory(door, 8, OLESTR("Doors"));
  const IZCategoryReltn* relation = zdm::GetCategoryReltn(*door);
  EXPECT_EQ(document.SetCategory(door, 8), doors);
  EXPECT_EQ(zdm::GetCategoryReltn(*door), relation);
  EXPECT_EQ(document.CategoryOf(wall), walls);
  EXPECT_EQ(document.CategoryOf(door), doors);
  EXPECT_EQ(door->GetReltnColl()->GetCount(), 1);
  EXPECT_EQ(TextOf(document.ReferencesTo(doors)), "2>4r ");
  EXPECT_THROW(document.SetCategory(door, 0), CAtlException);
  EXPECT_EQ(document.CategoryOf(door), doors);
  IZCategoryMgr* deleted = document->GetCategoryMgr();
  deleted->SetObjectValid(false);
  document.SetCategory(door, 7, OLESTR("Doors"));
  EXPECT_NE(document->GetCategoryMgr(), deleted);
  EXPECT_NE(document.CategoryOf(door), walls);
}

TEST(DocumentDelete, NamesWhatIsInTheWayAndWhatWillReferToNothing) {
  auto document = Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
  IZDMObject* a = document.Add(OLESTR("a"), walls);
  IZDMObject* b = document.Add(OLESTR("b"), walls);
  IZDMObject* c = document.Add(OLESTR("c"));
  document.Relate(a, b, ZR_DIFFUSIBLE);
  document.Relate(c, a);
  walls->SetCurrent(a);

  const auto obstacles = [&](std::initializer_list<IZDMObject*> objects) {
    std::string text;
    for (const auto& [object, why, by] : document.Delete(objects).obstacles) {
      text += std::to_string(IDOf(object)) +
              (why == DeletionObstacle::kCurrent ? " current of " : " of ") +
              std::to_string(IDOf(by));
    }
    return text;
  };
  EXPECT_EQ(obstacles({a, b}), "2 current of 1");
  EXPECT_EQ(obstacles({b}), "3 of 2");
  EXPECT_EQ(walls->GetCount(), 2) << "nothing was deleted so far";

  const Deletion plan = zdm::PlanDeletion(*document.Get(), {walls});
  EXPECT_TRUE(plan.obstacles.empty()) << "references from inside the set are not in the way";
  EXPECT_EQ(plan.objects.size(), 3u) << "a manager goes with its content";
  EXPECT_EQ(TextOf(plan.dangling), "4>2r ");
  zdm::CarryOut(*document.Get(), plan);
  EXPECT_EQ(document->GetCount(), 3) << "an object, and what every document has";
  EXPECT_EQ(document.Find(2), nullptr);
  EXPECT_EQ(TextOf(document.ReferencesOf(c)), "4>2r ") << "the ID is kept";
  document.Save(TempFile("deleted.zdm"));
  auto opened = Document::Open(document->GetPath());
  EXPECT_EQ(TextOf(opened.ReferencesOf(opened.Find(4))), "4>2r ");
}

/// What PlanDeletion finds for one object is what the ID table judges.
TEST(DocumentDelete, JudgesLikeTheTable) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    auto document = Document::Create();
    std::vector<IZDMObject*> objects;
    for (int i = 0; i < 6; ++i) {
      objects.push_back(document.Add(OLESTR("x")));
      if (random() % 4 == 0) objects.back()->ClearOptionAllowed(zdm::kReferencesCount);
      if (random() % 4 == 0) objects.back()->ClearOptionAllowed(zdm::kKeptWhileReferenced);
      if (random() % 8 == 0) document->SetCurrent(objects.back());
    }
    for (int i = 0; i < 6; ++i) {
      document.Relate(objects[random() % 6], objects[random() % 6],
                      random() % 3 == 0 ? ZR_NONDIFFUSIBLE : ZR_DIFFUSIBLE);
    }
    for (IZDMObject* object : objects) {
      const bool isFree = zdm::PlanDeletion(*document.Get(), {object}).obstacles.empty();
      EXPECT_EQ(isFree, document->GetOIDManager()->JudgeDelete(object) == 1);
    }
  }
}

/// By object and place: what refers to nothing, as the audit sees it.
std::multiset<std::string> DanglingIn(const Document& document) {
  std::multiset<std::string> places;
  for (const zdm::Finding& finding : zdm::Audit(*document.Get())) {
    if (finding.place.find(" to ") == std::string::npos) continue;
    places.insert(std::to_string(finding.object) + ' ' + finding.place);
  }
  return places;
}

TEST(DocumentDelete, PredictsWhatTheAuditFindsAfterwards) {
  int deleted = 0;
  for (unsigned seed = 0; seed < kTrials; ++seed) {
    RandomDocument made(seed);
    auto expected = DanglingIn(made.document);
    std::vector<IZDMObject*> objects = {made.Any(), made.Any(), nullptr, made.Any()};
    const Deletion plan = zdm::PlanDeletion(*made.document.Get(), objects);
    std::set<LONG> gone;
    for (IZDMObject* object : plan.objects) gone.insert(IDOf(object));
    if (plan.obstacles.empty()) {
      ++deleted;
      std::erase_if(expected, [&](const std::string& place) { return gone.contains(stoi(place)); });
      for (const Reference& reference : plan.dangling) {
        expected.insert(std::to_string(IDOf(reference.from)) + ' ' + zdm::NameOf(reference.via) +
                        " to " + std::to_string(reference.to->ID));
      }
    }
    zdm::CarryOut(*made.document.Get(), plan);
    EXPECT_EQ(DanglingIn(made.document), expected) << "seed " << seed;
  }
  EXPECT_GT(deleted, static_cast<int>(kTrials / 5));
}

}  // namespace
