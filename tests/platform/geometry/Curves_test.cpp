// Planes, arcs and curves against what they are defined by: their points.
#include "platform/geometry/GeArc.h"
#include "platform/geometry/GeCurve.h"
#include "platform/geometry/GePlane.h"
#include "tests/platform/geometry/Near.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int kSteps = 720;

std::vector<GeArc> SomeArcs() {
  return {
      GeArc(),
      GeArc({1, 2, 3}, 5, 0.1, 0.2),
      GeArc({1, 2, 3}, 5, -1, 1),
      GeArc({-4, 0, 0}, 2, 3, 1),
      GeArc({10, 0, 7}, {1, 2, 3}, {1, 0, 0}, 4, 0.5, 4),
      GeArc({0, 5, 0}, {0, -3, 0}, {0, 1, 0}, 1, 6, 20),  // the reference lies on the normal
      GeArc::MakeCircle({3, 3, 3}, {1, 1, 1}, 2),
  };
}

std::vector<XYZ> Sample(const GeArc& arc) {
  std::vector<XYZ> points;
  for (int i = 0; i <= kSteps; ++i) {
    points.push_back(arc.GetPointAt(arc.GetStartAngle() + arc.GetSweep() * i / kSteps));
  }
  return points;
}

TEST(GePlane, KeepsItsSidesUnderAnyMap) {
  const GeMatrix maps[] = {GeMatrix::MakeRotation({1, 2, 3}, {1, 5, 2}, 1),
                           GeMatrix::MakeMirror({1, 0, 0}, {1, 2, 0}),
                           GeMatrix::MakeScale({}, {1, 2, -3}),
                           GeMatrix::MakeFrame({1, 1, 1}, {1, 0, 0}, {1, 1, 0}, {0, 3, 1})};
  for (const GeMatrix& map : maps) {
    GePlane plane({1, 2, 3}, {1, -1, 2});
    const XYZ above = plane.GetOrigin() + plane.GetNormal() * 4 + XYZ{1, 1, 0};
    XYZ x;
    XYZ y;
    plane.GetAxes(x, y);
    const XYZ inside = map.TransformPoint(plane.GetOrigin() + x * 3 - y * 2);
    ASSERT_TRUE(plane.TransformBy(map));
    EXPECT_NEAR(plane.GetSignedDistance(inside), 0, 1e-9);
    EXPECT_GT(plane.GetSignedDistance(map.TransformPoint(above)), 0.1);
  }
  GePlane plane({1, 2, 3}, {1, 0, 0});
  EXPECT_FALSE(plane.TransformBy(GeMatrix::MakeScale({}, {1, 0, 1})));
  EXPECT_TRUE(plane.IsSame(GePlane({1, -7, 9}, {2, 0, 0})));
  EXPECT_FALSE(plane.IsSame(GePlane({1, 2, 3}, {-1, 0, 0})));
}

TEST(GePlane, AxesFormARightHandedFrame) {
  for (const XYZ& normal : {XYZ{0, 0, 1}, XYZ{0, 0, -1}, XYZ{0.01, 0.01, 1}, XYZ{0.02, 0, 1},
                            XYZ{1, 2, 3}, XYZ{0, -1, 0}}) {
    const GePlane plane({}, normal);
    XYZ x;
    XYZ y;
    plane.GetAxes(x, y);
    EXPECT_TRUE(IsNear(x.Cross(y), plane.GetNormal()));
    EXPECT_NEAR(x.GetLength(), 1, 1e-12);
  }
  XYZ x;
  XYZ y;
  GePlane({}, {0, 0, -1}).GetAxes(x, y);  // a drawing seen from behind
  EXPECT_TRUE(IsNear(x, {-1, 0, 0}));
  GePlane({}, {0.016, 0, 1}).GetAxes(x, y);  // 1/64 is 0.015625
  EXPECT_TRUE(IsNear(x, {0, 1, 0}));
  GePlane({}, {0, 0.015, 1}).GetAxes(x, y);
  EXPECT_TRUE(IsNear(x, {1, 0, 0}));
}

TEST(GePlane, MeetsLines) {
  GePlane plane;
  ASSERT_TRUE(GePlane::ThroughPoints({0, 0, 2}, {1, 0, 2}, {0, 1, 2}, plane));
  EXPECT_EQ(plane.GetNormal(), (XYZ{0, 0, 1}));
  XYZ at = {7, 7, 7};
  EXPECT_FALSE(plane.IntersectLine({0, 0, 0}, {1, 1, 0}, at));
  EXPECT_EQ(at, (XYZ{7, 7, 7}));
  ASSERT_TRUE(plane.IntersectLine({0, 0, 0}, {3, 0, 4}, at));
  EXPECT_TRUE(IsNear(at, {1.5, 0, 2}));
  EXPECT_FALSE(GePlane::ThroughPoints({0, 0, 0}, {1, 1, 1}, {5, 5, 5}, plane));
}

TEST(GeLnSeg, TheClosestPointIsAPartOfTheWay) {
  const struct {
    const char* name;
    GeLnSeg segment;
    XYZ point;
    double fraction;
  } rows[] = {
      {"inside", {{1, 0, 0}, {5, 0, 0}}, {2, 7, 0}, 0.25},
      {"before", {{1, 0, 0}, {5, 0, 0}}, {-9, 1, 0}, 0},
      {"behind", {{1, 0, 0}, {5, 0, 0}}, {9, 1, 0}, 1},
      {"no length", {{1, 2, 3}, {1, 2, 3}}, {9, 1, 0}, 0},
      {"tiny", {{0, 0, 0}, {1e-200, 0, 0}}, {0.5e-200, 0, 0}, 0.5},
      {"huge", {{0, 0, 0}, {1e200, 0, 0}}, {0.5e200, 1e200, 0}, 0.5},
  };
  for (const auto& row : rows) {
    EXPECT_DOUBLE_EQ(row.segment.GetClosest(row.point), row.fraction) << row.name;
  }
}

TEST(GeArc, BoundsAreTight) {
  for (const GeArc& arc : SomeArcs()) {
    const GeBox bounds = arc.GetBounds();
    GeBox sampled;
    for (const XYZ& point : Sample(arc)) {
      sampled.UnionPointToSelf(point);
      EXPECT_TRUE(bounds.Contains(point, 1e-9));
    }
    // Between two samples a circle of radius r rises by at most r (step / 2)^2 / 2.
    EXPECT_LT(bounds.GetMinPos().GetDistance(sampled.GetMinPos()), 1e-4);
    EXPECT_LT(bounds.GetMaxPos().GetDistance(sampled.GetMaxPos()), 1e-4);
  }
}

TEST(GeArc, MovesPointByPoint) {
  const GeMatrix maps[] = {GeMatrix::MakeRotation({1, 2, 3}, {1, 5, 2}, 1),
                           GeMatrix::MakeMirror({1, 0, 0}, {1, 2, 0}),
                           GeMatrix::MakeScale({4, 4, 4}, -2.5)};
  for (const GeMatrix& map : maps) {
    for (const GeArc& arc : SomeArcs()) {
      GeArc moved = arc;
      ASSERT_TRUE(moved.TransformBy(map));
      GeArc back = arc;
      back.Reverse();
      for (const double angle : {0.0, 1.0, 2.5, 6.0}) {
        EXPECT_TRUE(IsNear(moved.GetPointAt(angle), map.TransformPoint(arc.GetPointAt(angle))));
        EXPECT_TRUE(IsNear(back.GetPointAt(-angle), arc.GetPointAt(angle)));
      }
      EXPECT_TRUE(IsNear(back.GetStartPoint(), arc.GetEndPoint()));
      EXPECT_DOUBLE_EQ(back.GetLength(), arc.GetLength());
    }
  }
  GeArc arc;
  EXPECT_FALSE(arc.TransformBy(GeMatrix::MakeScale({}, {1, 2, 1})));
  const GeMatrix sheared = GeMatrix::MakeFrame({}, {1, 0, 0}, {0.6, 0.8, 0}, {0, 0, 1});
  EXPECT_FALSE(arc.TransformBy(sheared));
  EXPECT_EQ(arc.GetRadius(), 1.0);
}

TEST(GeArc, SweepsFromStartToEnd) {
  const struct {
    double start, end, sweep;
  } rows[] = {{0, 1, 1},           {1, 0, 2 * kPi - 1},   {3, -3, 2 * kPi - 6},
              {1, 1, 2 * kPi},     {0, 2 * kPi, 2 * kPi}, {-50, -50 + 6 * kPi, 2 * kPi},
              {0, 1e-12, 2 * kPi}, {0, -1e-12, 2 * kPi},  {0, 1e-3, 1e-3}};
  for (const auto& row : rows) {
    const GeArc arc({}, 2, row.start, row.end);
    EXPECT_NEAR(arc.GetSweep(), row.sweep, 1e-9) << row.start << " to " << row.end;
    EXPECT_EQ(arc.IsCircle(), row.sweep == 2 * kPi) << row.start << " to " << row.end;
  }
}

TEST(GeArc, RunsThroughThreePoints) {
  const XYZ a = {1, 5, 2};
  const XYZ b = {-3, 4, 2.5};
  const XYZ c = {0, 0, 1};
  GeArc arc;
  ASSERT_TRUE(GeArc::ThroughPoints(a, b, c, arc));
  EXPECT_TRUE(IsNear(arc.GetStartPoint(), a));
  EXPECT_TRUE(IsNear(arc.GetPointAt(arc.GetClosest(b)), b));
  EXPECT_TRUE(IsNear(arc.GetEndPoint(), c));
  EXPECT_FALSE(GeArc::ThroughPoints(a, b, a + (b - a) * 3, arc));
  EXPECT_FALSE(GeArc::ThroughPoints(a, b, a, arc));
}

// A slot's upper half: up, over, down. Length 3 + pi + 3.
GeCurve Slot() {
  GeCurve curve(GeLnSeg{{1, 0, 0}, {1, 3, 0}});
  EXPECT_TRUE(curve.Append(GeArc({0, 3, 0}, 1, 0, kPi)));
  EXPECT_TRUE(curve.Append(GeLnSeg{{-1, 3, 0}, {-1, 0, 0}}));
  return curve;
}

TEST(GeCurve, IsMeasuredAlongItself) {
  const GeCurve slot = Slot();
  EXPECT_NEAR(slot.GetLength(), 6 + kPi, 1e-12);
  const struct {
    double distance;
    XYZ point;
  } rows[] = {{-1, {1, 0, 0}},          {0, {1, 0, 0}},        {2, {1, 2, 0}},
              {3 + kPi / 2, {0, 4, 0}}, {4 + kPi, {-1, 2, 0}}, {99, {-1, 0, 0}}};
  for (const auto& row : rows) {
    EXPECT_TRUE(IsNear(slot.GetPointAt(row.distance), row.point)) << row.distance;
    double distance = -1;
    EXPECT_TRUE(IsNear(slot.GetClosestPoint(row.point, &distance), row.point));
    EXPECT_NEAR(distance, std::clamp(row.distance, 0.0, 6 + kPi), 1e-9);
  }
  EXPECT_EQ(slot.GetBounds().GetMinPos(), (XYZ{-1, 0, 0}));
  EXPECT_TRUE(IsNear(slot.GetBounds().GetMaxPos(), {1, 4, 0}));
}

TEST(GeCurve, StaysConnected) {
  GeCurve slot = Slot();
  EXPECT_FALSE(slot.Append(GeLnSeg{{-1, 2e-5, 0}, {1, 0, 0}}));
  EXPECT_FALSE(slot.IsClosed());
  EXPECT_TRUE(slot.Append(GeLnSeg{{-1, 0.9e-5, 0}, {1, 0, 0}}));
  EXPECT_TRUE(slot.IsClosed());
  EXPECT_TRUE(GeCurve::MakePolyline({{}, {1, 0, 0}, {1, 1, 0}}, true).IsClosed());
  EXPECT_TRUE(GeCurve::MakePolyline({{1, 2, 3}}, true).IsEmpty());
}

TEST(GeCurve, ReversedAndMovedItHasTheSamePoints) {
  const GeCurve slot = Slot();
  const GeMatrix map = GeMatrix::MakeMirror({5, 0, 0}, {1, 0, 1});
  GeCurve changed = slot;
  changed.Reverse();
  ASSERT_TRUE(changed.TransformBy(map));
  for (int i = 0; i <= 40; ++i) {
    const double d = slot.GetLength() * i / 40;
    EXPECT_TRUE(
        IsNear(changed.GetPointAt(slot.GetLength() - d), map.TransformPoint(slot.GetPointAt(d))));
  }
  EXPECT_FALSE(changed.TransformBy(GeMatrix::MakeScale({}, {2, 1, 1})));
  EXPECT_NEAR(changed.GetLength(), slot.GetLength(), 1e-9);
}

}  // namespace
