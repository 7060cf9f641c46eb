// An infinite plane with a positive side: a point on it and a normal of length 1.
#pragma once

#include "platform/Export.h"
#include "platform/geometry/XYZ.h"

class GeMatrix;

class ZDM_API GePlane {
 public:
  /// Through the origin, normal to the Z axis.
  GePlane() = default;
  /// `normal` need not have length 1; the Z axis is taken when it has no direction.
  GePlane(const XYZ& origin, const XYZ& normal);
  /// The plane through three points, counter-clockwise seen from the positive side. False, and
  /// `out` unchanged, when they lie on a line.
  [[nodiscard]] static bool ThroughPoints(const XYZ& a, const XYZ& b, const XYZ& c, GePlane& out);

  const XYZ& GetOrigin() const { return origin_; }
  const XYZ& GetNormal() const { return normal_; }
  /// Two directions in the plane that form a right-handed frame with the normal. They follow from
  /// the normal alone: x is the world's Z axis crossed with the normal, or the world's Y axis when
  /// the normal's x and y are both below 1/64.
  void GetAxes(XYZ& xAxis, XYZ& yAxis) const;

  /// Distance of `point`, positive on the side of the normal.
  double GetSignedDistance(const XYZ& point) const { return normal_.Dot(point - origin_); }
  /// The point of the plane that is closest to `point`.
  XYZ GetClosestPoint(const XYZ& point) const { return point - normal_ * GetSignedDistance(point); }
  /// Where the line through `point` along `direction` meets the plane. False, and `out` unchanged,
  /// when it runs along the plane within CMT::GetAngle().
  [[nodiscard]] bool IntersectLine(const XYZ& point, const XYZ& direction, XYZ& out) const;
  /// True for the same plane with the same positive side: normals within CMT::GetAngle(), the other
  /// origin within CMT::GetDist() of this plane.
  bool IsSame(const GePlane& other) const;
  /// Becomes its image; what lay on the positive side still does, also after a mirror. False, and
  /// nothing changes, when the image is no plane.
  [[nodiscard]] bool TransformBy(const GeMatrix& matrix);

 private:
  XYZ origin_;
  XYZ normal_ = {0, 0, 1};
};
