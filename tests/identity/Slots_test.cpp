// The places of virtual operations, as a caller compiled elsewhere sees them; 0 is the destructor.
#include "tests/support/SlotOf.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/identity/ZReltnVisitorMapIDForPaste.h"

namespace {

using namespace zdm::test;

TEST(Slots, KID) { ZDM_EXPECT_SLOTS(1, KID, SetStatus, ClearStatus); }

TEST(Slots, OID) { ZDM_EXPECT_SLOTS(1, OID, SetStatus, ClearStatus, JudgeStatus, Load, Save); }

using ByID = LONG (IZReltnMapID::*)(LONG);
using ByObject = LONG (IZReltnMapID::*)(IZDMObject*);
using ByOID = LONG (IZReltnMapID::*)(OID*);
using IDPair = LONG (IZReltnMapID::*)(LONG, LONG);
using ObjectPair = LONG (IZReltnMapID::*)(IZDMObject*, IZDMObject*);
using OIDPair = LONG (IZReltnMapID::*)(OID*, OID*);

TEST(Slots, RemappingTools) {
  ExpectInOrder(12, {ZDM_SLOT(IZReltnMapID, Initialize),
                     ZDM_SLOT(IZReltnMapID, ClearMap),
                     {"MapID(LONG)", SlotOf(ByID(&IZReltnMapID::MapID))},
                     {"MapID(IZDMObject*)", SlotOf(ByObject(&IZReltnMapID::MapID))},
                     {"MapID(OID*)", SlotOf(ByOID(&IZReltnMapID::MapID))},
                     ZDM_SLOT(IZReltnMapID, get_UseOriginIfMapFailed),
                     ZDM_SLOT(IZReltnMapID, put_UseOriginIfMapFailed),
                     {"AddMapIDPair(LONG)", SlotOf(IDPair(&IZReltnMapID::AddMapIDPair))},
                     {"AddMapIDPair(object)", SlotOf(ObjectPair(&IZReltnMapID::AddMapIDPair))},
                     {"AddMapIDPair(OID*)", SlotOf(OIDPair(&IZReltnMapID::AddMapIDPair))},
                     ZDM_SLOT(IZMergeMapTool, AddItem),
                     ZDM_SLOT(IZMergeMapTool, GetMergeOption),
                     ZDM_SLOT(IZMergeMapTool, MergeCurrentNode),
                     ZDM_SLOT(IZMergeMapTool, MeterProgress),
                     ZDM_SLOT(IZMergeMapTool, SetMeterProgress),
                     ZDM_SLOT(IZMergeMapTool, GetMeterProgress)});
  using Paste = ZReltnVisitorMapIDForPaste;
  ExpectInOrder(  // behind the five operations of CZObject that every class answers
      17, {ZDM_SLOT(Paste, getVersion),
           ZDM_SLOT(Paste, IsDumpRef),
           {"MapID(LONG)", SlotOf(static_cast<LONG (Paste::*)(LONG)>(&Paste::MapID))},
           {"MapID(object)", SlotOf(static_cast<LONG (Paste::*)(IZDMObject*)>(&Paste::MapID))},
           {"MapID(OID*)", SlotOf(static_cast<LONG (Paste::*)(OID*)>(&Paste::MapID))},
           {"AddMapIDPair(LONG)",
            SlotOf(static_cast<LONG (Paste::*)(LONG, LONG)>(&Paste::AddMapIDPair))},
           {"AddMapIDPair(object)",
            SlotOf(static_cast<LONG (Paste::*)(IZDMObject*, IZDMObject*)>(&Paste::AddMapIDPair))},
           {"AddMapIDPair(OID*)",
            SlotOf(static_cast<LONG (Paste::*)(OID*, OID*)>(&Paste::AddMapIDPair))},
           ZDM_SLOT(Paste, Paste)});
}

TEST(Slots, PathsKeepTheEmptyStatusOperations) {
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(const LONG&, ULONGLONG)>(&PID::SetStatus)), 1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::SetStatus)), -1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::ClearStatus)), -1);
}

}  // namespace
