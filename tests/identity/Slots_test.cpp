// The places of virtual operations, as a caller compiled elsewhere sees them; 0 is the destructor.
#include "tests/support/SlotOf.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

namespace {

using namespace zdm::test;

TEST(Slots, KID) { ZDM_EXPECT_SLOTS(1, KID, SetStatus, ClearStatus); }

TEST(Slots, OID) { ZDM_EXPECT_SLOTS(1, OID, SetStatus, ClearStatus, JudgeStatus, Load, Save); }

TEST(Slots, PathsKeepTheEmptyStatusOperations) {
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(const LONG&, ULONGLONG)>(&PID::SetStatus)), 1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::SetStatus)), -1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::ClearStatus)), -1);
}

}  // namespace
