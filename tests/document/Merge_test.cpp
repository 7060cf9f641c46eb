// Merging documents: decisions, new IDs, references that are cut, and nothing changed where nothing
// should be.
#include "document/Merge.h"

#include "document/Audit.h"
#include "document/MergeCandidates.h"
#include "tests/document/DocumentSupport.h"
#include "tests/document/RandomDocument.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/parameters/CZDMParameter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <string>

using namespace zdm::test;
using zdm::Document;
using zdm::MergeDecision;
using zdm::MergeReport;
using zdm::Refusal;

namespace {

/// "source>target" with a letter for the decision, then what was replaced, then what was cut.
std::string TextOf(const MergeReport& report) {
  std::string text;
  for (const auto& [source, decision, id] : report.objects) {
    text += std::to_string(IDOf(source)) + "sradx"[static_cast<int>(decision)] +
            std::to_string(id) + ' ';
  }
  for (const auto& [id, data] : report.replaced) {
    text += "old " + std::to_string(id) + ' ' + ShapeOf(data) + ' ';
  }
  for (const auto& [from, to, via, fate] : report.cut) {
    text += "cut " + LinkOf(from, to, via) + ' ';
  }
  return text;
}

zdm::MergeOptions With(eZMergeOption counterparts, bool dryRun = false) {
  return {.counterparts = counterparts, .choose = {}, .dryRun = dryRun};
}

/// Changes a document as its users do.
void Edit(RandomDocument& made) {
  for (IZDMObject* object : made.all) {
    if (made.OneIn(4)) object->SetName(OLESTR("renamed"));
    if (made.OneIn(4)) made.document.Relate(object, made.Any());
  }
  for (int i = 0; i < 2; ++i) {
    IZDMObject* added = made.document.Add(OLESTR("added"));
    made.document.Relate(added, made.Any());
    made.document.Relate(made.Any(), added);
  }
}

TEST(Merge, OfACopyChangesNothing) {
  for (unsigned seed = 0; seed < kTrials; ++seed) {
    RandomDocument target(seed);
    const std::string before = ShapesOf(*target.document.Get());
    RandomDocument source(seed);
    target.document->SetModified(false);
    const MergeReport report = target.document.Merge(source.document);
    for (const auto& [object, decision, id] : report.objects) EXPECT_EQ(IDOf(object), id);
    const auto& records = source.document->GetOIDManager()->GetOIDs();
    EXPECT_EQ(std::ssize(report.objects), std::ranges::count_if(records, zdm::IsAlive));
    EXPECT_FALSE(target.document->IsModified());
    EXPECT_EQ(ShapesOf(*target.document.Get()), before);
    ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
  }
}

TEST(Merge, DoesWhatItsDryRunSays) {
  for (unsigned seed = 0; seed < kTrials; ++seed) {
    RandomDocument target(seed / 2);
    const auto option = static_cast<eZMergeOption>(ZMO_SAME + seed % 3);
    std::string said;
    std::size_t findings = zdm::Audit(*target.document.Get()).size();
    {
      RandomDocument source(seed / 2 + seed % 2);
      Edit(source);
      const std::string before = ShapesOf(*target.document.Get());
      const std::string there = ShapesOf(*source.document.Get());
      said = TextOf(target.document.Merge(source.document, With(option, true)));
      EXPECT_EQ(ShapesOf(*target.document.Get()), before) << "a dry run changes nothing";
      const MergeReport report = target.document.Merge(source.document, With(option));
      EXPECT_EQ(TextOf(report), said);
      EXPECT_EQ(ShapesOf(*source.document.Get()), there) << "the source stays";
      std::map<const OID*, LONG> ids = {{source.document->GetOID(), -1}};
      for (const auto& [object, decision, id] : report.objects) ids[object->GetOID()] = id;
      const auto expected = [&ids](const OID* record) {
        const auto found = ids.find(record);
        return found != ids.end() ? found->second : 0;
      };
      for (const auto& [object, decision, id] : report.objects) {
        if (decision != MergeDecision::kAdd && decision != MergeDecision::kReplace) continue;
        EXPECT_EQ(ShapeOf(target.document.Find(id)), ShapeOf(object, expected));
        if (decision == MergeDecision::kReplace) continue;
        EXPECT_EQ(IDOf(target.document.Find(id)->GetOwner()), expected(object->GetOwnerOID()));
      }
    }
    ShapesOf(*target.document.Get());  // no record of the source is left
    // What replaced objects had to nothing may be gone; nothing of that kind is new.
    EXPECT_LE(zdm::Audit(*target.document.Get()).size(), findings);
    ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ' ' << said;
  }
}

/// Walls with a, b and category 4 of each document; the source has more.
class MergeTest : public testing::Test {
 protected:
  MergeTest() {
    for (Document* each : {&source, &target}) {
      IZDMObjMgr* walls = each->AddManager(OLESTR("Walls"));  // 1
      each->Add(OLESTR("a"), walls);                          // 2
      each->Add(OLESTR("b"), walls);                          // 3
      const auto category = zdm::MakeObject<IZCategory, CZDMCategory>();
      category->SetNumber(4);
      each->Add(category, nullptr);  // 4
    }
  }

  Document source = Document::Create();
  Document target = Document::Create();
};

TEST_F(MergeTest, FindsCounterpartsByWhatMakesThemTheSame) {
  IZDMObjMgr* roof = source.AddManager(OLESTR("Roof"));    // 5
  source.Add(OLESTR("tile"), roof);                        // 6
  IZDMObjMgr* walls = source.AddManager(OLESTR("Walls"));  // 7
  source.Add(OLESTR("c"), walls);                          // 8
  target.Add(OLESTR("other"));                             // 5
  target.Find(4)->SetID(9);                                // a category is found by its number
  target->GetOIDManager()->ReSort();
  EXPECT_EQ(TextOf(target.Merge(source)), "-2d-2 -3s-3 -4d-4 1d1 2s2 3s3 4s9 5a10 6a11 7d1 8a12 ");
  EXPECT_EQ(IDOf(target.Find(11)->GetOwner()), 10);
  EXPECT_EQ(IDOf(target.Find(12)->GetOwner()), 1);
}

TEST_F(MergeTest, AsksForEveryPairAndNamesWhatIsCut) {
  IZDMObjMgr* roof = source.AddManager(OLESTR("Roof"));  // 5
  IZDMObject* tile = source.Add(OLESTR("tile"), roof);   // 6
  target.AddManager(OLESTR("Roof"));                     // 5
  source.Relate(source.Find(2), tile);
  source.Relate(source.Find(2), source.Find(3));
  source.Find(2)->SetName(OLESTR("A"));
  zdm::MergeOptions options;
  options.choose = [](IZDMObject* object, IZDMObject*) -> BYTE {
    const BYTE answers[] = {0, ZMO_MERGE, ZMO_REPLACE, ZMO_ADD, 0, ZMO_SAME};
    return IDOf(object) > 0 ? answers[object->GetID()] : BYTE{ZMO_SAME};
  };
  const MergeReport report = target.Merge(source, options);
  EXPECT_EQ(TextOf(report).substr(0, 44), "-2s-2 -3x0 -4s-4 1d1 2r2 3a6 4x0 5s5 6x0 old");
  ASSERT_EQ(report.replaced.size(), 1u);
  EXPECT_EQ(ShapeOf(report.replaced[0].data)[0], 'a');
  ASSERT_EQ(report.cut.size(), 1u);
  EXPECT_EQ(report.cut[0].to, tile->GetOID());
  const auto references = target.ReferencesOf(target.Find(2));
  ASSERT_EQ(references.size(), 1u);
  EXPECT_EQ(references[0].to->ID, 6);
  EXPECT_EQ(zdm::ViewAs<IZDMObjMgr>(target.Find(1))->GetCount(), 3);
}

/// Under other IDs, in the other order; some differ by less than numbers may.
TEST(MergeCandidates, FindParametersAsTheirManagerDoes) {
  using Set = void (*)(IZDMParameter&);
  const Set values[] = {[](IZDMParameter& p) { p.SetDouble(1); },
                        [](IZDMParameter& p) { p.SetDouble(1.000009); },
                        [](IZDMParameter& p) { p.SetDouble(1.000018); },
                        [](IZDMParameter& p) { p.SetDouble(std::nan("")); },
                        [](IZDMParameter& p) { p.SetLong(1); },
                        [](IZDMParameter& p) { p.SetLong(2); },
                        [](IZDMParameter& p) { p.SetBool(true); },
                        [](IZDMParameter& p) { p.SetUlongPtr(1); },
                        [](IZDMParameter& p) { p.SetGUID(GUID_NULL); },
                        [](IZDMParameter& p) { p.SetString(OLESTR("a-b")); },
                        [](IZDMParameter& p) { p.SetString(OLESTR("ab")); },
                        [](IZDMParameter& p) { p.SetString(OLESTR("\u00E9")); },
                        [](IZDMParameter& p) { p.SetString(OLESTR("e\u0301")); },
                        [](IZDMParameter& p) { p.SetString(nullptr); },
                        [](IZDMParameter& p) { p.SetString(OLESTR("")); },
                        [](IZDMParameter& p) { p.SetRelation(nullptr, false); },
                        [](IZDMParameter& p) { p.SetElement(nullptr); },
                        [](IZDMParameter& p) { p.SetReadOnly(true); },
                        [](IZDMParameter& p) { p.SetKey(5); },
                        [](IZDMParameter& p) {
                          p.SetKey(5);
                          p.SetLong(1);
                        },
                        [](IZDMParameter& p) {
                          p.SetReadOnly(true);
                          p.SetLong(1);
                        }};
  auto source = Document::Create();
  auto target = Document::Create();
  std::vector<IZDMObject*> parameters;
  const auto add = [&parameters](Document& document, Set set) {
    const auto parameter = zdm::MakeObject<IZDMParameter, CZDMParameter>();
    set(*parameter);
    parameters.push_back(zdm::ViewAs<IZDMObject>(parameter.Get()));
    document.Add(parameters.back(), nullptr);
  };
  for (std::size_t i = 0; i < std::size(values); ++i) target.Add(OLESTR("x"));
  for (auto set = std::rbegin(values); set != std::rend(values); ++set) add(target, *set);
  parameters.clear();
  for (const Set set : values) add(source, set);
  const zdm::MergeCandidates candidates(*target.Get());
  int found = 0;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    IZDMObject* counterpart = candidates.Find(parameters[i]);
    EXPECT_EQ(counterpart, target->FindObject(parameters[i])) << i;
    found += counterpart != nullptr ? 1 : 0;
  }
  EXPECT_EQ(found, static_cast<int>(std::size(values)) - 1) << "all but what is no number";
}

TEST_F(MergeTest, RefusesItself) {
  EXPECT_EQ(target.Merge(target).refusal, Refusal::kSameDocument);
}

/// The document's strategy through the library's tool does what the library does by itself.
TEST(MergeStrategy, DecidesLikeTheLibrary) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    std::string results[2];
    for (const bool isNamed : {false, true}) {
      RandomDocument source(seed);
      RandomDocument target(seed);
      Edit(source);
      target.document->SetMergeOption(static_cast<BYTE>(ZMO_SAME + seed % 3));
      ZReltnVisitorMapID tool;
      tool.Initialize(target.document.Get());
      const auto added = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
      const auto replaced = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
      auto* from = zdm::ViewAs<IZDMObjMgr>(source.all[1]);
      auto* to = zdm::ViewAs<IZDMObjMgr>(target.all[1]);
      if (isNamed) {
        tool.MergeCurrentNode(from, to, added, replaced);
      } else {
        COIDManager::MergeMgr(from, to, &tool, added, replaced, nullptr, nullptr);
      }
      std::string& result = results[isNamed ? 1 : 0];
      for (LONG id = 1; id < 20; ++id) result += std::to_string(tool.MapID(id)) + ' ';
      result += std::to_string(added->GetCount()) + ' ' + std::to_string(replaced->GetCount());
    }
    EXPECT_EQ(results[0], results[1]) << "seed " << seed;
  }
}

}  // namespace
