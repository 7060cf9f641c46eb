// What managers do with the managers they hold, and with those that hold themselves.
#include "tests/model/ManagerSupport.h"

namespace {

using namespace zdm::test;

TEST_F(ObjMgr, RemovesObjectsByStatusDownTheTreeButNoManager) {
  auto manager = MakeFilled({OLESTR("A"), OLESTR("b"), OLESTR("C")});
  auto inner = MakeFilled({OLESTR("D"), OLESTR("e")});
  auto innermost = MakeFilled({OLESTR("F")});
  manager->AttachHead(inner);
  inner->AttachHead(innermost);
  inner->SetStatus(kBit);
  innermost->AttachTail(innermost);  // a manager in itself,
  inner->AttachTail(manager);        // and one in its own child
  manager->RemoveStatusObjects(kBit);
  EXPECT_EQ(NamesIn(*manager), "m b");
  EXPECT_EQ(NamesIn(*inner), "m e m");
  EXPECT_EQ(NamesIn(*innermost), "m");
  inner->RemoveAll();
  innermost->RemoveAll();
}

TEST_F(ObjMgr, WhatIsRemovedByStatusMayTakeMoreOutAsItEnds) {
  auto manager = MakeFilled({OLESTR("A"), OLESTR("b"), OLESTR("c")});
  class Emptying : public CZDMPlainObject {
   public:
    ~Emptying() override { manager->RemoveAll(); }
    IZDMObjMgr* manager = nullptr;
  };
  auto emptying = zdm::Attached(new Emptying);
  emptying->manager = manager;
  emptying->SetStatus(kBit);
  manager->AttachHead(static_cast<IZDMObject*>(emptying.Get()));
  emptying.Reset();
  manager->RemoveStatusObjects(kBit);
  EXPECT_TRUE(manager->IsEmpty());
}

TEST_F(ObjMgr, ClearsStatusDownTheTreeBehindTheFilter) {
  for (const bool filtered : {false, true}) {
    auto manager = MakeFilled({OLESTR("A"), OLESTR("B")});
    auto inner = MakeFilled({OLESTR("C")});
    inner->SetStatus(kBit);
    inner->AttachTail(manager);
    manager->AttachTail(inner);
    manager->GetHead()->SetStatus(41);
    inner->GetHead()->SetStatus(41);
    manager->ClearStatusTree(filtered ? 41 : 0, kBit);
    EXPECT_EQ(NamesWith(*manager, kBit), filtered ? "B m" : "");
    EXPECT_EQ(NamesWith(*inner, kBit), filtered ? "C" : "") << "behind a manager without the bit";
    inner->RemoveAll();
  }
}

TEST_F(ObjMgr, AChainOfManagersNeedsNoDeepStack) {
  constexpr int kDepth = 50000;
  auto top = MakeManager(OLESTR("top"));
  auto leaf = MakeNamed(OLESTR("leaf"));
  leaf->SetStatus(kBit);
  ZRefPtr<IZDMObjMgr> last = top;
  for (int depth = 1; depth < kDepth; ++depth) {
    auto next = MakeManager();
    last->AttachTail(next);
    last = next;
  }
  last->AttachTail(leaf);
  last.Reset();
  top->ClearStatusTree(0, kBit);
  EXPECT_FALSE(leaf->JudgeStatus(kBit));
  leaf->SetStatus(kBit);
  top->RemoveStatusObjects(kBit);
  EXPECT_EQ(leaf->GetReferenceCount(), 1u);
  top.Reset();
}

}  // namespace
