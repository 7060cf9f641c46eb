// The places of virtual operations, as a caller compiled elsewhere sees them; 0 is the destructor.
#include "tests/support/SlotOf.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

namespace {

using zdm::test::ExpectInOrder;
using zdm::test::SlotOf;

TEST(Slots, KID) { ExpectInOrder(1, {ZDM_SLOT(KID, SetStatus), ZDM_SLOT(KID, ClearStatus)}); }

TEST(Slots, OID) {
  ExpectInOrder(1, {ZDM_SLOT(OID, SetStatus), ZDM_SLOT(OID, ClearStatus),
                    ZDM_SLOT(OID, JudgeStatus), ZDM_SLOT(OID, Load), ZDM_SLOT(OID, Save)});
}

TEST(Slots, PathsKeepTheEmptyStatusOperations) {
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(const LONG&, ULONGLONG)>(&PID::SetStatus)), 1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::SetStatus)), -1);
  EXPECT_EQ(SlotOf(static_cast<void (PID::*)(eZObjStatus)>(&PID::ClearStatus)), -1);
}

}  // namespace
