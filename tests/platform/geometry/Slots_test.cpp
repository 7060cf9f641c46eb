// The order of operations of the geometry interfaces, as a caller compiled elsewhere sees it.
#include "platform/geometry/IGeArc.h"
#include "platform/geometry/IGeCircle.h"
#include "platform/geometry/IGeCurve.h"
#include "platform/geometry/IGeLnSeg.h"
#include "platform/geometry/IGePlane.h"
#include "platform/geometry/IGePt.h"
#include "tests/support/SlotOf.h"

namespace {

using zdm::test::ExpectInOrder;

TEST(Slots, IGeCurve) {
  ExpectInOrder(3, {ZDM_SLOT(IGeCurve, GetCurve), ZDM_SLOT(IGeCurve, TransformBy)});
}

TEST(Slots, IGePlane) {
  ExpectInOrder(3, {ZDM_SLOT(IGePlane, GetPlane), ZDM_SLOT(IGePlane, SetPlane),
                    ZDM_SLOT(IGePlane, TransformBy)});
}

TEST(Slots, IGePt) {
  ExpectInOrder(
      3, {ZDM_SLOT(IGePt, GetPoint), ZDM_SLOT(IGePt, SetPoint), ZDM_SLOT(IGePt, TransformBy)});
}

TEST(Slots, IGeArc) { ExpectInOrder(5, {ZDM_SLOT(IGeArc, GetArc), ZDM_SLOT(IGeArc, SetArc)}); }

TEST(Slots, IGeCircle) {
  ExpectInOrder(5, {ZDM_SLOT(IGeCircle, GetCircle), ZDM_SLOT(IGeCircle, SetCircle)});
}

TEST(Slots, IGeLnSeg) {
  ExpectInOrder(5, {ZDM_SLOT(IGeLnSeg, GetLnSeg), ZDM_SLOT(IGeLnSeg, SetPoints)});
}

}  // namespace
