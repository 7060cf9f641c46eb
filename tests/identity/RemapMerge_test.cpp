// How a manager takes in the objects of one of another document.
#include "document/Document.h"
#include "tests/identity/Records.h"
#include "tests/model/ManagerSupport.h"
#include "zdm/host/IZMergeStrategy.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/model/CZDMDictionary.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace zdm::test;

/// Two managers of each document: Walls with a and b, in Walls the manager Inner with c; and Doors.
struct House {
  explicit House(const OLECHAR* suffix) {
    for (IZDMObject** object : {&a, &b}) {
      *object = document.Add((std::basic_string<OLECHAR>(OLESTR("x")) + suffix).c_str(), walls);
    }
    inner = document.AddManager(OLESTR("Inner"), walls);
    c = document.Add((std::basic_string<OLECHAR>(OLESTR("c")) + suffix).c_str(), inner);
    doors = document.AddManager(OLESTR("Doors"));
  }

  CZDMObjMgr& Walls() { return *static_cast<CZDMObjMgr*>(walls); }

  zdm::Document document = zdm::Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));  // 1
  IZDMObject* a = nullptr;                                   // 2
  IZDMObject* b = nullptr;                                   // 3
  IZDMObjMgr* inner = nullptr;                               // 4
  IZDMObject* c = nullptr;                                   // 5
  IZDMObjMgr* doors = nullptr;                               // 6
};

class MergeFromTest : public testing::Test {
 protected:
  MergeFromTest() { tool.Initialize(here.document.Get()); }

  LONG Merge(IZDMObject* sourceNode = nullptr, IZDMObject* targetNode = nullptr) {
    return here.Walls().MergeFrom(there.walls, added, replaced, &tool, sourceNode, targetNode);
  }

  House there{OLESTR("1")};
  House here{OLESTR("2")};
  ZRefPtr<IZDMObjColl> added = MakeObjColl();
  ZRefPtr<IZDMObjColl> replaced = MakeObjColl();
  ZReltnVisitorMapID tool;
};

TEST_F(MergeFromTest, DecidesByTheOptionOfTheDocument) {
  struct Case {  // NOLINT(clang-analyzer-optin.performance.Padding)
    eZMergeOption option;
    const char* walls;
    const char* inner;
    std::string added;
    std::string replaced;
    LONG steps;  // of the tool's meter
  };
  const Case cases[] = {{ZMO_SAME, "x2 x2 Inner", "c2", "", "", 4},
                        {ZMO_REPLACE, "x1 x1 Inner", "c1", "", "x2 x2 c2", 4},
                        {ZMO_ADD, "x2 x2 Inner x1 x1", "c2 c1", "x1 x1 c1", "", 1},
                        {static_cast<eZMergeOption>(0), "x2 x2 Inner", "c2", "", "", 1},
                        {ZMO_MERGE, "x2 x2 Inner", "c2", "", "", 1}};
  Meter meter;
  tool.SetMeterProgress(&meter);
  for (const Case& each : cases) {
    SCOPED_TRACE(each.option);
    House target(OLESTR("2"));
    target.document->SetMergeOption(each.option);
    tool.Initialize(target.document.Get());
    tool.ClearMap();
    added->RemoveAll();
    replaced->RemoveAll();
    meter.steps = 0;
    auto& walls = target.Walls();
    EXPECT_EQ(walls.MergeFrom(there.walls, added, replaced, &tool, nullptr, nullptr), 0);
    EXPECT_EQ(NamesIn(walls), each.walls);
    EXPECT_EQ(NamesIn(*target.inner), each.inner);
    EXPECT_EQ(NamesIn(*added), each.added);
    EXPECT_EQ(NamesIn(*replaced), each.replaced);
    EXPECT_EQ(meter.steps, each.steps);
    EXPECT_EQ(NamesIn(*there.walls), "x1 x1 Inner");
    added->RemoveAll();
  }
  EXPECT_EQ(tool.GetMeterProgress(), &meter);
  tool.SetMeterProgress(nullptr);
}

TEST_F(MergeFromTest, LeadsReferencesAndOwnersOver) {
  // Without counterparts: d in Inner, and a manager with an object.
  auto& source = there.document;
  IZDMObject* d = source.Add(OLESTR("d"), there.inner);               // 7
  IZDMObjMgr* roof = source.AddManager(OLESTR("Roof"), there.inner);  // 8
  IZDMObject* tile = source.Add(OLESTR("tile"), roof);                // 9
  source.Relate(d, tile);
  source.Relate(tile, there.a);
  source.Relate(there.c, d);
  roof->SetCurrent(tile);
  here.document->SetMergeOption(ZMO_REPLACE);
  EXPECT_EQ(Merge(), 0);
  EXPECT_EQ(NamesIn(*here.inner), "c1 d Roof");
  auto* roofHere = zdm::ViewAs<IZDMObjMgr>(here.inner->GetTail());
  EXPECT_EQ(NamesIn(*roofHere), "tile");
  EXPECT_EQ(roofHere->GetCurrent(), roofHere->GetHead());
  EXPECT_EQ(roofHere->GetID(), 8u);
  const auto targetOf = [](IZDMObject* object) {
    return zdm::ViewAs<IZSingleReltn>(object->GetReltnColl()->GetHead())->GetReltnObject();
  };
  EXPECT_EQ(targetOf(here.c), here.document.Find(7)) << "replaced";
  EXPECT_EQ(targetOf(here.document.Find(7)), roofHere->GetHead()) << "added";
  EXPECT_EQ(targetOf(roofHere->GetHead()), here.a) << "a counterpart";
  EXPECT_EQ(targetOf(there.c), d) << "the source stays";
}

struct Strategy : IZObjectImpl<IZMergeStrategy> {
  void Merge(IZDMObjMgr* source, IZDMObjMgr* target, IZMergeMapTool* tool, IZDMObjColl* added,
             IZDMObjColl* replaced) override {
    calls += NameOf(source) + '>' + NameOf(target) + ' ';
    COIDManager::MergeMgr(source, target, tool, added, replaced, nullptr, nullptr);
  }
  std::string calls;
};

TEST_F(MergeFromTest, ThePairThatIsNamedGoesToTheStrategy) {
  here.inner->SetName(OLESTR("Elsewhere"));
  auto strategy = zdm::Attached(new Strategy);
  here.document->SetMergeStrategy(strategy);
  EXPECT_EQ(Merge(there.inner, here.inner), 0);
  EXPECT_EQ(strategy->calls, "Inner>Elsewhere ");
  EXPECT_EQ(tool.MapID(4), 4);
  EXPECT_TRUE(added->IsEmpty());

  // Another manager that finds the named target as its counterpart is added.
  here.inner->SetName(OLESTR("Inner"));
  auto* second = there.document.AddManager(OLESTR("Inner"), there.walls);
  EXPECT_EQ(Merge(second, here.inner), 0);
  EXPECT_EQ(NamesIn(*added), "Inner c1");
}

TEST_F(MergeFromTest, RefusesWhatIsNotAnotherManagerOfItsClassInADocument) {
  const auto dictionary = MakeManager<CZDMDictionary>();
  const auto loose = zdm::Attached(new CZDMObjMgr);
  auto& walls = here.Walls();
  for (IZDMObjMgr* source :
       {static_cast<IZDMObjMgr*>(dictionary), here.walls, static_cast<IZDMObjMgr*>(nullptr)}) {
    EXPECT_EQ(walls.MergeFrom(source, added, replaced, &tool, nullptr, nullptr), 1);
  }
  EXPECT_EQ(walls.MergeFrom(there.walls, nullptr, replaced, &tool, nullptr, nullptr), 1);
  EXPECT_EQ(walls.MergeFrom(there.walls, added, nullptr, &tool, nullptr, nullptr), 1);
  EXPECT_EQ(loose->MergeFrom(there.walls, added, replaced, &tool, nullptr, nullptr), 1);
  EXPECT_TRUE(added->IsEmpty());
}

}  // namespace
