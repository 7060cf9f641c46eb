// How references are led over to copies: the ID map, pasting, copying.
#include "document/Document.h"
#include "tests/identity/Records.h"
#include "tests/model/ManagerSupport.h"
#include "tests/support/UIDReltn.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/identity/ZReltnVisitorMapIDForPaste.h"

#include <gtest/gtest.h>

#include <list>
#include <string>

namespace {

using namespace zdm::test;

IZDMObject* ObjectOf(IZDMObjMgr* manager) { return manager; }

/// The IDs of a list, each followed by a blank.
template <class List>
std::string IDsOf(List& list) {
  std::string ids;
  for (LONGLONG pos = list.GetHeadPosition(); pos != 0;) {
    ids += std::to_string(static_cast<LONG>(list.GetNext(pos)->GetID())) + ' ';
  }
  return ids;
}

LONG TargetOf(IZRelation* relation) {
  const OID* oid = zdm::ViewAs<IZSingleReltn>(relation)->GetReltnOID();
  return oid != nullptr ? oid->ID : 0;
}

template <class Visitor>
class IDMap : public testing::Test {};
using Visitors = testing::Types<ZReltnVisitorMapID, ZReltnVisitorMapIDForPaste>;
TYPED_TEST_SUITE(IDMap, Visitors);

TYPED_TEST(IDMap, AnswersTheLastEntryOrTheIDItself) {
  TypeParam visitor;
  EXPECT_EQ(visitor.MapID(7), 7);
  visitor.AddMapIDPair(7, 12);
  EXPECT_EQ(visitor.AddMapIDPair(7, 15), 0);
  EXPECT_EQ(visitor.MapID(7), 15);
  OID seven(0, 0, 7, nullptr);
  OID eight(0, 0, 8, nullptr);
  EXPECT_EQ(visitor.MapID(&seven), 15);
  visitor.AddMapIDPair(&seven, &eight);
  EXPECT_EQ(visitor.MapID(7), 8);
  const auto object = MakeNamed(OLESTR("x"));
  object->SetID(8);
  visitor.AddMapIDPair(object.Get(), object.Get());
  EXPECT_EQ(visitor.MapID(object.Get()), 8);
  EXPECT_EQ(visitor.MapID(static_cast<OID*>(nullptr)), 0);
  TypeParam copy(visitor);
  visitor.AddMapIDPair(7, 9);
  EXPECT_EQ(copy.MapID(7), 8) << "a map of its own";
}

/// A document with a manager and five objects in it.
class Remap : public testing::Test {
 protected:
  Remap() {
    UIDReltn::zInit();
    for (IZDMObject*& object : objects) object = document.Add(OLESTR("x"), manager);
  }

  /// A clone, to be pasted.
  ZRefPtr<IZDMObject> CloneOf(IZDMObject* object) { return zdm::CloneAs<IZDMObject>(object); }

  IZRelation* Relate(IZDMObject* from, IZDMObject* to, bool isPasted = true) {
    IZRelation* relation = document.Relate(from, to);
    if (isPasted) relation->SetReltnStatus(ZRS_PASTED);
    return relation;
  }

  zdm::Document document = zdm::Document::Create();
  COIDManager& ids = *document->GetOIDManager();
  CPIDManager& paths = *document->GetPIDManager();
  IZDMObjMgr* manager = document.AddManager(OLESTR("Manager"));  // 1
  IZDMObject* objects[5] = {};                                   // 2 to 6
};

TEST_F(Remap, LeadsAReferenceToTheRecordOfTheNewIDOrCutsIt) {
  struct Case {
    const char* what;
    LONG to;
    bool usesOrigin;
    LONG expected;
  };
  const Case cases[] = {{"mapped", 4, false, 4},
                        {"not mapped", 2, false, 2},
                        {"absent", 99, false, 0},
                        {"absent, origin kept", 99, true, 2},
                        {"mapped, origin kept", 4, true, 4}};
  for (const auto& [what, to, usesOrigin, expected] : cases) {
    ZReltnVisitorMapID visitor;
    visitor.Initialize(document.Get());
    visitor.AddMapIDPair(2, to);
    visitor.put_UseOriginIfMapFailed(usesOrigin);
    bool answered = !usesOrigin;
    visitor.get_UseOriginIfMapFailed(&answered);
    EXPECT_EQ(answered, usesOrigin) << what;
    const auto relation = RelationTo(objects[0]);
    relation->SetReltnStatus(0x8000);  // the host's: passed over
    EXPECT_FALSE(visitor.Visit(nullptr, nullptr, relation.Get())) << what;
    EXPECT_EQ(TargetOf(relation), 2) << what;
    relation->ClearReltnStatus(0x8000);
    EXPECT_FALSE(visitor.Visit(nullptr, nullptr, relation.Get())) << what;
    EXPECT_EQ(TargetOf(relation), expected) << what;
  }
}

TEST_F(Remap, APathIsLedOverStepByStepOrCut) {
  PID* path = paths.QueryPID(std::vector{objects[0]->GetOID(), objects[1]->GetOID()});
  ZReltnVisitorMapID visitor;
  visitor.Initialize(document.Get());
  visitor.AddMapIDPair(2, 5);
  PID* mapped = path;
  EXPECT_FALSE(visitor.MapPID(nullptr, nullptr, nullptr, &mapped));
  EXPECT_EQ(mapped, paths.FindPID(std::vector{objects[3]->GetOID(), objects[1]->GetOID()}));
  ASSERT_NE(mapped, nullptr);
  visitor.AddMapIDPair(3, 99);
  mapped = path;
  visitor.MapPID(nullptr, nullptr, nullptr, &mapped);
  EXPECT_EQ(mapped, nullptr);
}

TEST_F(Remap, PasteGivesNewIDsInOrderAndLeadsReferencesOver) {
  Relate(objects[0], objects[1]);
  Relate(objects[0], objects[2]);
  Relate(objects[0], objects[1], false);
  const auto a = CloneOf(objects[0]);
  const auto b = CloneOf(objects[1]);
  ZReltnVisitorMapIDForPaste visitor;
  visitor.Paste(document.Get(), MakeObjColl({a, b, a}));
  EXPECT_EQ(IDsOf(*manager), "2 3 4 5 6 7 8 ");
  EXPECT_EQ(visitor.MapID(3), 8);
  EXPECT_EQ(ids.GetOIDByID(7), a->GetOID());
  EXPECT_TRUE(a->IsObjectAttached() && a->IsObjectValid());
  IZReltnColl& relations = *a->GetReltnColl();
  LONGLONG pos = relations.GetHeadPosition();
  IZRelation* toPasted = relations.GetNext(pos);
  IZRelation* toOther = relations.GetNext(pos);
  IZRelation* notEntered = relations.GetNext(pos);
  EXPECT_EQ(TargetOf(toPasted), 8);
  EXPECT_TRUE(toPasted->JudgeReltnStatus(ZRS_VALID));
  EXPECT_EQ(TargetOf(toOther), 4);
  EXPECT_FALSE(toOther->JudgeReltnStatus(ZRS_VALID));
  EXPECT_EQ(TargetOf(notEntered), 3);
  EXPECT_TRUE(notEntered->JudgeReltnStatus(ZRS_VALID));
}

TEST_F(Remap, APastedManagerListsEachOfItsObjectsOnce) {
  const auto pasted = MakeManager(OLESTR("Pasted"));
  const auto inside = MakeNamed(OLESTR("a"));
  const auto guest = MakeNamed(OLESTR("b"));
  pasted->SetOwner(document.Get());
  pasted->AttachTail(inside);
  LONGLONG pos = 0;
  pasted->InsertAfter(guest, &pos);
  guest->SetOwner(manager);
  ZReltnVisitorMapIDForPaste visitor;
  visitor.Paste(document.Get(), MakeObjColl({ObjectOf(pasted), inside}));
  EXPECT_EQ(IDsOf(*pasted), "8 9 ");
  EXPECT_EQ(IDsOf(*manager), "2 3 4 5 6 9 ") << "listed in a manager that does not own it";
  EXPECT_EQ(pasted->GetID(), 7u);
  EXPECT_EQ(document->GetTail(), ObjectOf(pasted));
}

/// What paste makes of a compound reference, given that object 2 was pasted as 3.
TEST_F(Remap, PasteLeadsOverTheKeyOfACompoundReference) {
  OID* const pasted = objects[0]->GetOID();
  OID* const copy = objects[1]->GetOID();
  OID* const other = objects[2]->GetOID();
  PID* const toPasted = paths.QueryPID(std::vector{pasted, other});
  PID* const toCopy = paths.QueryPID(std::vector{copy, other});
  PID* const toOther = paths.QueryPID(std::vector{other, pasted});
  struct Case {
    const char* what;
    CID reference;
    CID expected;
    bool isValid;
  };
  const Case cases[] = {
      {"direct", {nullptr, nullptr, pasted}, {nullptr, nullptr, copy}, true},
      {"direct, not pasted", {nullptr, nullptr, other}, {nullptr, nullptr, other}, false},
      {"to nothing", {}, {}, false},
      {"path", {nullptr, toPasted, pasted}, {nullptr, toCopy, pasted}, true},
      {"path, not pasted", {nullptr, toOther, pasted}, {nullptr, toOther, pasted}, false},
      {"both paths", {toOther, toPasted, other}, {toOther, toPasted, other}, true},
      {"own path alone", {toOther, nullptr, other}, {toOther, nullptr, other}, true}};
  for (const Case& each : cases) {
    ZReltnVisitorMapIDForPaste visitor;
    visitor.Paste(document.Get(), MakeObjColl());
    visitor.AddMapIDPair(pasted, copy);
    const auto relation = zdm::MakeObject<IZRelation, UIDReltn>();
    relation->SetReltnStatus(ZRS_PASTED);
    UID& uid = static_cast<UIDReltn*>(relation.Get())->uid;
    uid.SetCID(&each.reference);
    EXPECT_FALSE(visitor.Visit(nullptr, nullptr, relation.Get())) << each.what;
    EXPECT_TRUE(uid.CID->IsSame(&each.expected)) << each.what;
    EXPECT_EQ(relation->JudgeReltnStatus(ZRS_VALID), each.isValid) << each.what;
  }
}

TEST_F(Remap, CopiesGetConsecutiveIDsTheManagerFirst) {
  objects[1]->SetObjectValid(false);
  Meter meter;
  ids.SetProgressMeter(&meter);
  ZReltnVisitorMapID map;
  map.Initialize(document.Get());
  const auto added = MakeObjColl();
  map.AddItem(manager, added);
  EXPECT_EQ(IDsOf(*added), "7 8 9 10 11 ");
  EXPECT_EQ(map.MapID(1), 7);
  EXPECT_EQ(map.MapID(3), 3) << "not valid";
  EXPECT_EQ(meter.steps, 5);
  EXPECT_EQ(added->GetTail()->GetOwner(), ObjectOf(manager)) << "led over later";

  const auto group = MakeManager();
  group->AttachTail(MakeNamed(OLESTR("a")));
  group->AttachTail(MakeNamed(OLESTR("b")));
  group->AttachTail(group->GetHead());
  const auto more = MakeObjColl();
  ids.QueryNewPID(&map, group, more);
  EXPECT_EQ(IDsOf(*more), "12 13 14 ");
  ids.SetProgressMeter(nullptr);
}

TEST_F(Remap, ACopyIsReboundByIDsAndComesUnderItsOwner) {
  auto other = zdm::Document::Create();
  auto* there = other.AddManager(OLESTR("There"));  // 1
  other.Add(OLESTR("x"), there);                    // 2
  Relate(objects[4], objects[0]);
  Relate(objects[4], objects[3]);
  std::list<IZDMObject*> pending;
  IZDMObject* copy = CloneOf(objects[4]).Detach();  // MapPIDForCopy takes over the reference
  copy->AddRef();
  EXPECT_EQ(COIDManager::MapPIDForCopy(copy, other.Get(), other->GetOIDManager(), pending), 0);
  EXPECT_EQ(there->GetTail(), copy);
  EXPECT_EQ(copy->Release(), 1u);
  EXPECT_TRUE(copy->IsObjectAttached());
  LONGLONG pos = copy->GetReltnColl()->GetHeadPosition();
  EXPECT_EQ(TargetOf(copy->GetReltnColl()->GetNext(pos)), 2);
  EXPECT_EQ(TargetOf(copy->GetReltnColl()->GetNext(pos)), 0);
  EXPECT_TRUE(pending.empty());

  for (const auto& [current, isPending] : {std::pair(objects[0], false), {objects[3], true}}) {
    manager->SetCurrent(current);
    const auto group = zdm::CloneAs<IZDMObjMgr>(manager);
    group->SetID(static_cast<ULONG>(-7));
    pending.clear();
    COIDManager::MapPIDForCopy(group, other.Get(), other->GetOIDManager(), pending);
    EXPECT_EQ(pending == std::list<IZDMObject*>{group.Get()}, isPending);
    EXPECT_EQ(group->GetCurrent() == there->GetHead(), !isPending);
    EXPECT_EQ(other->Has(group), false) << "hard IDs are not attached";
    group->SetOwnerOID(nullptr);
  }
}

TEST_F(Remap, TheReferenceManagerIsFoundAndExchanged) {
  auto* next = document.AddManager(OLESTR("Next"));
  Relate(objects[0], objects[1]);
  Relate(objects[0], manager)->SetReltnStatus(0x08000000);
  EXPECT_EQ(COIDManager::GetRefMgr(objects[0]), nullptr) << "the object's status is asked first";
  COIDManager::SetRefMgr(objects[0], manager->GetOID(), next->GetOID());
  objects[0]->SetStatus(ZOS_HASREFMGR);
  EXPECT_EQ(COIDManager::GetRefMgr(objects[0]), manager);
  COIDManager::SetRefMgr(objects[0], manager->GetOID(), next->GetOID());
  EXPECT_EQ(COIDManager::GetRefMgr(objects[0]), next);
  EXPECT_EQ(TargetOf(objects[0]->GetReltnColl()->GetHead()), 3);
}

}  // namespace
