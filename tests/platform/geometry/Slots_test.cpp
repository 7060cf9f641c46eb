// The order of operations of the geometry interfaces, as a caller compiled elsewhere sees it.
#include "platform/geometry/IGeArc.h"
#include "platform/geometry/IGeCircle.h"
#include "platform/geometry/IGeCurve.h"
#include "platform/geometry/IGeLnSeg.h"
#include "platform/geometry/IGePlane.h"
#include "platform/geometry/IGePt.h"
#include "tests/support/SlotOf.h"

namespace {

using namespace zdm::test;

TEST(Slots, Geometry) {
  ZDM_EXPECT_SLOTS(3, IGeCurve, GetCurve, TransformBy);
  ZDM_EXPECT_SLOTS(3, IGePlane, GetPlane, SetPlane, TransformBy);
  ZDM_EXPECT_SLOTS(3, IGePt, GetPoint, SetPoint, TransformBy);
  ZDM_EXPECT_SLOTS(5, IGeArc, GetArc, SetArc);
  ZDM_EXPECT_SLOTS(5, IGeCircle, GetCircle, SetCircle);
  ZDM_EXPECT_SLOTS(5, IGeLnSeg, GetLnSeg, SetPoints);
}

}  // namespace
