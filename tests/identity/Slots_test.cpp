// The places of virtual operations, as a caller compiled elsewhere sees them; 0 is the destructor.
#include "tests/support/SlotOf.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/identity/ZReltnVisitorMapIDForPaste.h"

#include <vector>

namespace {

using namespace zdm::test;

TEST(Slots, KID) { ZDM_EXPECT_SLOTS(1, KID, SetStatus, ClearStatus); }

TEST(Slots, OID) { ZDM_EXPECT_SLOTS(1, OID, SetStatus, ClearStatus, JudgeStatus, Load, Save); }

/// The six operations of one name each, in the order of their kinds of argument.
template <class Tool>
std::vector<Slot> MapSlots() {
  return {{"MapID(LONG)", SlotOfOverload<LONG(LONG)>(&Tool::MapID)},
          {"MapID(IZDMObject*)", SlotOfOverload<LONG(IZDMObject*)>(&Tool::MapID)},
          {"MapID(OID*)", SlotOfOverload<LONG(OID*)>(&Tool::MapID)},
          {"AddMapIDPair(LONG)", SlotOfOverload<LONG(LONG, LONG)>(&Tool::AddMapIDPair)},
          {"AddMapIDPair(IZDMObject*)",
           SlotOfOverload<LONG(IZDMObject*, IZDMObject*)>(&Tool::AddMapIDPair)},
          {"AddMapIDPair(OID*)", SlotOfOverload<LONG(OID*, OID*)>(&Tool::AddMapIDPair)}};
}

TEST(Slots, RemappingTools) {
  ZDM_EXPECT_SLOTS(12, IZReltnMapID, Initialize, ClearMap);
  const auto tool = MapSlots<IZReltnMapID>();
  ExpectInOrder(14, {tool[0], tool[1], tool[2]});
  ZDM_EXPECT_SLOTS(17, IZReltnMapID, get_UseOriginIfMapFailed, put_UseOriginIfMapFailed);
  ExpectInOrder(19, {tool[3], tool[4], tool[5]});
  ZDM_EXPECT_SLOTS(22, IZMergeMapTool, AddItem, GetMergeOption, MergeCurrentNode, MeterProgress,
                   SetMeterProgress, GetMeterProgress);
  using Paste = ZReltnVisitorMapIDForPaste;  // behind the five operations of CZObject
  ZDM_EXPECT_SLOTS(17, Paste, getVersion, IsDumpRef);
  const auto paste = MapSlots<Paste>();
  ExpectInOrder(19, {paste[0], paste[1], paste[2], paste[3], paste[4], paste[5]});
  ZDM_EXPECT_SLOTS(25, Paste, Paste);
}

TEST(Slots, PathsKeepTheEmptyStatusOperations) {
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(const LONG&, ULONGLONG)>(&PID::SetStatus)), 1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::SetStatus)), -1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::ClearStatus)), -1);
}

}  // namespace
