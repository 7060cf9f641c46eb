// What the ID table does to managers and collections.
#include "tests/identity/Records.h"
#include "tests/model/ManagerSupport.h"
#include "zdm/identity/CID.h"

namespace {

using namespace zdm::test;

class Managed : public testing::Test {
 protected:
  /// A manager directly below the root, listed.
  ZRefPtr<IZDMObjMgr> MakeListed(const OLECHAR* name) {
    auto manager = MakeManager(name);
    db->Add(manager);
    return manager;
  }

  Document db;
};

TEST_F(Managed, GetIDsDownTheTreeInListOrder) {
  const auto top = MakeManager(OLESTR("top"));
  const auto nested = MakeManager(OLESTR("nested"));
  const auto a = MakeNamed(OLESTR("a"));
  const auto b = MakeNamed(OLESTR("b"));
  top->AttachTail(nested->GetIZObject());
  top->AttachTail(b->GetIZObject());
  nested->AttachTail(a->GetIZObject());
  nested->AttachTail(top->GetIZObject());  // a cycle
  db->oids.AssignItemID(top, false, false);
  EXPECT_FALSE(b->IsObjectAttached());
  db->oids.AssignItemID(top, true, true);  // has its ID; the others have none
  EXPECT_EQ(top->GetID(), 1U);
  EXPECT_EQ(db->oids.GetOIDs().size(), 4U);
  EXPECT_EQ(static_cast<LONG>(nested->GetID()), -2);
  EXPECT_EQ(static_cast<LONG>(a->GetID()), -3);
  EXPECT_EQ(static_cast<LONG>(b->GetID()), -4);
  nested->RemoveTailNoReturn();
}

TEST_F(Managed, GetIDsBeforeAnyoneHoldsThem) {
  auto* clone = MakeManager(OLESTR("m"))->Clone();  // count 0
  auto* manager = zdm::ViewAs<IZDMObjMgr>(clone);
  db->oids.AssignItemID(manager, false, true);
  EXPECT_EQ(manager->GetReferenceCount(), 0U);
  const ZRefPtr<IZDMObjMgr> held = manager;
  EXPECT_EQ(held->GetID(), 1U);
}

TEST_F(Managed, AreSetUpWithTheObjectsTheyOwn) {
  const auto manager = MakeListed(OLESTR("m"));
  const auto listed = db->MakeObject(OLESTR("listed"));
  const auto late = db->MakeObject(OLESTR("late"));
  const auto plain = db->MakeObject(OLESTR("plain"));
  const auto alone = db->MakeObject(OLESTR("alone"));
  manager->AttachTail(listed->GetIZObject());
  listed->SetObjectValid(false);
  late->SetOwner(manager);
  late->ClearStatus(ZOS_ATTACHED);
  late->AddRef();  // the creation reference, which SetupOwner gives up
  plain->SetOwner(listed);
  alone->SetOwner(nullptr);
  db->oids.SetupOwner();
  EXPECT_EQ(NamesIn(*manager), "listed late") << "nothing is listed twice";
  EXPECT_TRUE(listed->IsObjectValid());
  EXPECT_TRUE(late->IsObjectAttached() && late->IsObjectValid());
  EXPECT_EQ(late->GetReferenceCount(), 2U);
  for (IZDMObject* object : {plain.Get(), alone.Get()}) {
    EXPECT_FALSE(object->IsObjectAttached() || object->IsObjectValid());
  }
}

TEST_F(Managed, AnswerTheFirstObjectOfTheSameID) {
  const auto manager = MakeListed(OLESTR("m"));
  const auto first = MakeNamed(OLESTR("first"));
  const auto second = MakeNamed(OLESTR("second"));
  const auto stranger = MakeNamed(OLESTR("stranger"));
  for (const auto& object : {first, second}) {
    manager->AttachTail(object->GetIZObject());
    object->SetID(7);
  }
  EXPECT_EQ(COIDManager::GetSameIDObj(second), first.Get());
  EXPECT_EQ(COIDManager::GetSameIDObj(stranger), nullptr) << "no manager";
  stranger->SetOwner(manager);
  EXPECT_EQ(COIDManager::GetSameIDObj(stranger), nullptr);
}

TEST_F(Managed, ExchangeDataWithWhatHasTheSameID) {
  const auto manager = MakeListed(OLESTR("m"));
  const auto unknown = MakeManager(OLESTR("unknown"));
  const auto coll = MakeObjColl({unknown});
  std::vector<ZRefPtr<IZDMObjMgr>> undo;
  for (const OLECHAR* name : {OLESTR("a"), OLESTR("b")}) {
    const auto present = MakeManager(name);
    manager->AddTail(present->GetIZObject());
    undo.push_back(MakeManager(OLESTR("old")));
    undo.back()->SetID(present->GetID());
    undo.back()->SetOwner(manager);
    coll->AddTail(undo.back());
  }
  COIDManager::SetObjEx(coll);
  EXPECT_EQ(NamesIn(*manager), "old old");
  EXPECT_EQ(NamesIn(*coll), "unknown a b");
  COIDManager::SetObjEx(coll);
  EXPECT_EQ(NamesIn(*manager), "a b");
}

TEST_F(Managed, TakeTheirFirstObjectAsTheCurrentOne) {
  const auto manager = MakeListed(OLESTR("m"));
  COIDManager::ValidCurrentObj(manager);
  EXPECT_EQ(manager->GetCurrent(), nullptr);
  for (const OLECHAR* name : {OLESTR("a"), OLESTR("b")}) {
    manager->AddTail(MakeNamed(name)->GetIZObject());
  }
  COIDManager::ValidCurrentObj(manager);
  EXPECT_EQ(manager->GetCurrent(), manager->GetHead());
}

TEST_F(Managed, ReceiveTheObjectsOfAReference) {
  const auto self = db->MakeObject(OLESTR("self"));
  const auto through = db->MakeObject(OLESTR("through"));
  const auto target = db->MakeObject(OLESTR("target"));
  OID unbound;
  const auto coll = MakeObjColl();
  CID(db->pids.QueryPID(self), db->pids.QueryPID(through), target->GetOID()).ExpandCID(coll);
  CID(nullptr, nullptr, &unbound).ExpandCID(coll);
  EXPECT_EQ(NamesIn(*coll), "self through target");
  COIDManager::DumpObjColl(coll, 0);
}

}  // namespace
