// What managers do with the objects they own: adding, walking, finding, removing, ending.
#include "tests/model/ManagerSupport.h"
#include "tests/support/Thrown.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zdm::test {

ZDM_OBJECT_BODY(Probe)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

TEST_F(ObjMgr, ManagersDifferFromObjectsInKindOptionsAndName) {
  for (const auto& manager : {MakeManager(), MakeManager<CZDMDictionary>()}) {
    EXPECT_EQ(manager->GetDMType(), 4);
    EXPECT_EQ(static_cast<ULONGLONG>(manager->GetOptionAllowed()), 0xF200FA2000000000u);
    zdm::Bstr name;
    manager->GetName(name.Out());
    EXPECT_TRUE(name.IsEmpty() && !name.IsNull());
  }
  EXPECT_FALSE(MakeManager()->IsA(ZInterface<IZDMDictionary>::ID()));
}

// Adding.

TEST_F(ObjMgr, RegisteringAddsGiveAnIDOnce) {
  auto manager = MakeFilled({});
  auto object = MakeNamed(OLESTR("a"));
  auto first = MakeNamed(OLESTR("b"));
  const int before = db.changes;
  manager->AddTail(object);
  manager->AddTail(object);
  manager->AddHead(object);
  manager->AddHead(first);
  manager->AddTail(nullptr);
  EXPECT_EQ(NamesIn(*manager), "b a");
  EXPECT_EQ(object->GetID(), manager->GetID() + 1);
  EXPECT_EQ(first->GetID(), manager->GetID() + 2);
  EXPECT_TRUE(object->IsObjectAttached() && object->IsObjectValid());
  EXPECT_EQ(object->GetOwner(), manager.Get());
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  EXPECT_EQ(db.changes, before + 2);
  EXPECT_EQ(db.oids.GetOIDByID(object->GetOID()->ID), object->GetOID());
}

TEST_F(ObjMgr, WithoutADocumentARegisteringAddOnlyAttaches) {
  auto manager = MakeManager();
  auto object = MakeNamed(OLESTR("a"));
  manager->AddTail(object);
  manager->AddTail(object);
  EXPECT_EQ(NamesIn(*manager), "a a");
  EXPECT_EQ(object->GetID(), 0u);
  EXPECT_FALSE(object->IsObjectAttached());
}

TEST_F(ObjMgr, AttachingAddsTakeTheOwnerAndRawOperationsDoNot) {
  auto manager = MakeFilled({OLESTR("x")});
  auto object = MakeNamed(OLESTR("a"));
  manager->AttachHead(object);
  manager->AttachTail(object);
  EXPECT_EQ(NamesIn(*manager), "a x a");
  EXPECT_EQ(object->GetOwner(), manager.Get());
  EXPECT_EQ(object->GetID(), 0u);

  auto raw = MakeNamed(OLESTR("r"));
  LONGLONG after = manager->GetHeadPosition();
  LONGLONG before = manager->GetTailPosition();
  EXPECT_EQ(manager->InsertAfter(raw, &after), S_OK);
  EXPECT_EQ(manager->InsertBefore(raw, &before), S_OK);
  EXPECT_EQ(manager->SetAt(manager->GetHeadPosition(), raw), S_OK);
  EXPECT_EQ(NamesIn(*manager), "r r x r a");
  EXPECT_EQ(raw->GetOwner(), nullptr);
  EXPECT_EQ(manager->RemoveItem(raw), S_OK);
  EXPECT_EQ(manager->RemoveItem(nullptr), E_INVALIDARG);
  EXPECT_EQ(NamesIn(*manager), "r x r a");
}

TEST_F(ObjMgr, SetupOwnerPutsHardIDsAtTheHead) {
  auto manager = MakeFilled({});
  for (const auto& [id, name] : {std::pair<LONG, const OLECHAR*>{3, OLESTR("three")},
                                 {-2, OLESTR("hard2")},
                                 {-3, OLESTR("hard3")},
                                 {4, OLESTR("four")}}) {
    auto object = MakeNamed(name);
    db.oids.AddOID(new OID(0, 0, id, nullptr));
    db.oids.ReSort();
    ASSERT_EQ(db.oids.RegisterSelf(id, object), 1);
    ASSERT_EQ(db.oids.RegisterOwner(manager->GetOID()->ID, object), 1);
    object->AddRef();  // the creation reference, which SetupOwner gives up
  }
  db.oids.SetupOwner();
  EXPECT_EQ(NamesIn(*manager), "hard2 hard3 three four");
  EXPECT_EQ(manager->GetHead()->GetReferenceCount(), 1u);
  EXPECT_EQ(NamesWith(*manager, ZOS_VALID), "hard2 hard3 three four");
}

// Walks by status.

TEST_F(ObjMgr, WalksTheObjectsWithABitBothWays) {
  auto manager =
      MakeFilled({OLESTR("a"), OLESTR("B"), OLESTR("c"), OLESTR("D"), OLESTR("E"), OLESTR("f")});
  auto* iterator = zdm::ViewAs<IZDMObjIterator>(manager);
  EXPECT_EQ(NamesWith(*manager, kBit) + NamesBackwardsWith(*manager, kBit), "B D EE D B");
  EXPECT_EQ(NamesWith(*iterator, kBit) + NamesBackwardsWith(*iterator, kBit), "B D EE D B");
  EXPECT_EQ(NamesIn(*iterator), "a B c D E f");
  EXPECT_EQ(manager->GetStatusCount(kBit), 3u);
  EXPECT_EQ(manager->GetStatusCount(kBit + 1), 0u);
  EXPECT_EQ(manager->GetHeadStatusPosition(kBit + 1), 0);
  EXPECT_EQ(manager->GetTailStatusPosition(kBit + 1), 0);
  LONGLONG none = 0;
  EXPECT_EQ(Thrown([&] { manager->GetStatusNext(kBit, none); }), E_FAIL);
  EXPECT_THROW(manager->GetStatusCount(64), std::out_of_range);

  Find(manager, OLESTR("c"))->SetObjectValid(true);
  LONGLONG pos = manager->GetValidHeadPosition();
  EXPECT_EQ(NameOf(manager->GetValidNext(pos)), "c");
  EXPECT_EQ(pos, 0);
}

TEST_F(ObjMgr, MovesAmongTheObjectsWithABit) {
  const std::string none = "a B c D E f";
  const struct {
    LONG (IZDMObjMgr::*move)(IZDMObject*, LONG);
    const OLECHAR* name;
    std::string order;
  } rows[] = {{&IZDMObjMgr::MovePrevStatus, OLESTR("E"), "a B c E D f"},
              {&IZDMObjMgr::MovePrevStatus, OLESTR("D"), "a D c B E f"},
              {&IZDMObjMgr::MovePrevStatus, OLESTR("B"), none},
              {&IZDMObjMgr::MovePrevStatus, OLESTR("f"), none},
              {&IZDMObjMgr::MoveNextStatus, OLESTR("B"), "a D c B E f"},
              {&IZDMObjMgr::MoveNextStatus, OLESTR("D"), "a B c E D f"},
              {&IZDMObjMgr::MoveNextStatus, OLESTR("E"), none},
              {&IZDMObjMgr::MoveNextStatus, OLESTR("a"), none}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    auto manager =
        MakeFilled({OLESTR("a"), OLESTR("B"), OLESTR("c"), OLESTR("D"), OLESTR("E"), OLESTR("f")});
    const LONG expected = row.order == none ? E_FAIL : S_OK;
    EXPECT_EQ((manager.Get()->*row.move)(Find(manager, row.name), kBit), expected);
    EXPECT_EQ(NamesIn(*manager), row.order);
  }
}

// Names.

TEST_F(ObjMgr, UniqueNamesCountOnFromTheHighestNumber) {
  const struct {
    std::initializer_list<const OLECHAR*> names;
    const OLECHAR* prefix;
    const char* expected;
  } rows[] = {
      {{}, OLESTR("Wall"), "Wall 1"},
      {{OLESTR("Level 2"), OLESTR("Level 10"), OLESTR("Roof")}, OLESTR("Level"), "Level 11"},
      {{OLESTR("Level"), OLESTR("Level")}, OLESTR("Level"), "Level 3"},
      {{OLESTR("Wall 7 copy")}, OLESTR("Wall"), "Wall 8"},
      {{OLESTR("North Wall 7")}, OLESTR("Wall"), "Wall 2"},
      {{OLESTR("Wall Wall \u00A0 4")}, OLESTR("Wall"), "Wall 5"},
      {{OLESTR("Wall -9")}, OLESTR("Wall"), "Wall 2"},
      {{OLESTR("Wall +9")}, OLESTR("Wall"), "Wall 10"},
      {{OLESTR("Wall 9223372036854775806")}, OLESTR("Wall"), "Wall 9223372036854775807"},
      {{OLESTR("Wall 9223372036854775807")}, OLESTR("Wall"), "Wall 2"},
      {{OLESTR("Wall 99999999999999999999")}, OLESTR("Wall"), "Wall 2"},
      {{OLESTR("5"), OLESTR("x")}, OLESTR(""), " 6"},
      {{OLESTR("5")}, nullptr, " 1"}};
  for (const auto& row : rows) {
    auto manager = MakeFilled(row.names);
    auto coll = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) coll->AddTail(manager->GetNext(pos));
    zdm::Bstr name;
    manager->GetUniqueName(row.prefix, name.Out());
    EXPECT_EQ(zdm::ToUtf8(name.View()), row.expected);
    coll->GetUniqueName(row.prefix, name.Out());
    EXPECT_EQ(zdm::ToUtf8(name.View()), row.expected);
  }
}

TEST_F(ObjMgr, FindsByNameStatusAndInterface) {
  auto manager = MakeFilled({OLESTR("a"), OLESTR("B"), OLESTR("B")});
  manager->GetTail()->ClearStatus(kBit);
  IZDMObject* second = manager->GetAt(manager->FindIndex(1));
  EXPECT_EQ(manager->FindByName(OLESTR("B")), second);
  EXPECT_EQ(manager->FindByName(OLESTR("b")), nullptr);
  EXPECT_EQ(manager->FindByName(nullptr), nullptr);
  second->ClearStatus(kBit);
  manager->GetTail()->SetStatus(kBit);
  EXPECT_EQ(manager->FindByNameStatus(OLESTR("B"), kBit), manager->GetTail());
  EXPECT_EQ(manager->FindByNameStatus(OLESTR("a"), kBit), nullptr);
  second->SetName(nullptr);
  EXPECT_EQ(manager->FindByName(OLESTR("")), second) << "no name equals an empty one";

  auto nested = MakeManager(OLESTR("nested"));
  manager->AttachTail(nested);
  EXPECT_EQ(manager->FindByInterface(ZInterface<IZDMObjMgr>::ID()), nested.Get());
  EXPECT_EQ(manager->FindByInterface(ZInterface<IZDMDictionary>::ID()), nullptr);
  auto coll = MakeObjColl();
  nested->SetStatus(kBit);
  manager->CollectStatusInterface(coll, kBit, ZInterface<IZDMObject>::ID());
  manager->CollectStatusInterface(coll, kBit, ZInterface<IZDMObjMgr>::ID());
  EXPECT_EQ(NamesIn(*coll), "B nested nested");
}

// The same object, the same manager.

TEST_F(ObjMgr, ManagersAreTheSameByName) {
  auto manager = MakeManager(OLESTR("walls"));
  const auto same = [&](IZDMObject* other) { return manager->JudgeSame(other); };
  EXPECT_TRUE(same(MakeManager(OLESTR("walls"))));
  EXPECT_TRUE(same(MakeManager<CZDMDictionary>(OLESTR("walls"))));
  EXPECT_FALSE(same(MakeManager(OLESTR("Walls"))));
  EXPECT_FALSE(same(MakeNamed(OLESTR("walls"))));
  EXPECT_FALSE(same(nullptr));
}

TEST_F(ObjMgr, FindsAValidManagerOfTheSameClassAndNameOrTheObjectItself) {
  auto manager = MakeFilled({OLESTR("a")});
  auto dictionary = MakeManager<CZDMDictionary>(OLESTR("walls"));
  auto invalid = MakeManager(OLESTR("walls"));
  auto walls = MakeManager(OLESTR("walls"));
  manager->AddTail(dictionary);
  manager->AttachTail(invalid);
  manager->AddTail(walls);
  EXPECT_EQ(manager->FindObject(MakeManager(OLESTR("walls"))), walls.Get());
  EXPECT_EQ(manager->FindObject(MakeManager<CZDMDictionary>(OLESTR("walls"))), dictionary.Get());
  EXPECT_EQ(manager->FindObject(MakeManager(OLESTR("roofs"))), nullptr);
  EXPECT_EQ(manager->FindObject(nullptr), nullptr);

  IZDMObject* plain = manager->GetHead();
  EXPECT_EQ(manager->FindObject(plain), nullptr) << "not valid yet";
  plain->SetObjectValid(true);
  EXPECT_EQ(manager->FindObject(plain), plain);
  EXPECT_EQ(manager->FindObject(MakeNamed(OLESTR("a"))), nullptr);
}

TEST_F(ObjMgr, CopiesNameAndCurrentObjectFromAnyManagerAndNothingFromAnObject) {
  auto source = MakeFilled({OLESTR("a"), OLESTR("b")});
  source->SetCurrent(source->GetTail());
  auto copy = MakeManager<CZDMDictionary>(OLESTR("former"));
  copy->CopyFrom(MakeNamed(OLESTR("plain")), zdm::kCopyMode);
  EXPECT_EQ(NameOf(copy), "former");
  copy->CopyFrom(source, zdm::kCopyMode);
  EXPECT_EQ(NameOf(copy), "m");
  EXPECT_EQ(copy->GetCurrent(), source->GetTail());
  EXPECT_TRUE(copy->IsEmpty());
  source->CopyFrom(source.Get(), zdm::kCopyMode);
  EXPECT_EQ(source->GetCurrent(), source->GetTail());

  EXPECT_TRUE(zdm::CloneAs<IZDMObjMgr>(source.Get())->IsEmpty());
  source->SetCurrent(nullptr);
  copy->CopyFrom(source, zdm::kCopyMode);
  EXPECT_EQ(copy->GetCurrent(), nullptr);
}

TEST_F(ObjMgr, TheCurrentObjectMayEndBeforeTheManager) {
  auto manager = MakeFilled({OLESTR("a")});
  auto registered = db.MakeObject();
  for (const bool isListed : {false, true}) {
    manager->SetCurrent(isListed ? registered.Get() : manager->GetHead());
    EXPECT_NE(manager->GetCurrent(), nullptr);
    manager->RemoveAll();
    registered.Reset();
    EXPECT_EQ(manager->GetCurrent(), nullptr) << isListed;
    registered = db.MakeObject();
  }
}

// Collecting.

TEST_F(ObjMgr, CollectsUnderTheStatusLockAndLeavesNoMark) {
  auto manager = MakeFilled({OLESTR("a"), OLESTR("b")});
  auto probe = zdm::Attached(new Probe);
  std::string seen;
  probe->onJudge = [&](LONG) {
    seen += OID::c_ObjStatusLock.test(ZOS_VISITMARK) ? "locked" : "open";
    seen += OID::c_ObjStatusKey[ZOS_VISITMARK] != 0 ? " with key " : " without key ";
  };
  manager->AttachTail(probe);
  manager->AttachTail(manager->GetHead());
  ZRefPtr<IZDMObjColl> coll;
  manager->Collect(0, false, coll.Out());
  EXPECT_EQ(NamesIn(*coll), "a b ");
  EXPECT_EQ(seen, "locked with key ");
  EXPECT_EQ(coll->GetReferenceCount(), 1u);
  manager->Collect(0, true, coll.Out());
  EXPECT_EQ(coll->GetCount(), 4);
  manager->Collect(ZInterface<IZDMObjMgr>::ID(), false, coll.Out());
  EXPECT_TRUE(coll->IsEmpty());
  const auto expectNoMark = [&] {
    EXPECT_EQ(manager->GetStatusCount(ZOS_VISITMARK), 0u);
    EXPECT_FALSE(OID::c_ObjStatusLock.any());
    EXPECT_EQ(OID::c_ObjStatusKey[ZOS_VISITMARK], 0u);
  };
  expectNoMark();

  probe->onJudge = [](LONG) { throw std::runtime_error("asked"); };
  EXPECT_THROW(manager->Collect(0, false, coll.Out()), std::runtime_error);
  probe->onJudge = nullptr;
  EXPECT_EQ(coll, nullptr);
  expectNoMark();
}

TEST_F(ObjMgr, ObjectsThatOutliveTheirManagerHaveNoOwner) {
  auto manager = MakeManager();
  auto object = MakeNamed(OLESTR("a"));
  auto moved = MakeNamed(OLESTR("b"));
  auto other = MakeManager();
  manager->AttachTail(object);
  manager->AttachTail(moved);
  other->AttachTail(moved);
  manager.Reset();
  EXPECT_EQ(object->GetOwnerOID(), nullptr);
  EXPECT_EQ(moved->GetOwner(), other.Get());
}

}  // namespace
