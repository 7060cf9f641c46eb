// A circular arc, or a full circle, anywhere in space.
// Angles are in radians, counter-clockwise about the normal, from the reference direction. The arc
// runs from its start angle over its sweep, which is more than 0 and at most 2 pi.
#pragma once

#include "platform/Export.h"
#include "platform/geometry/GeBox.h"
#include "platform/geometry/XYZ.h"

class GeMatrix;

class ZDM_API GeArc {
 public:
  /// The unit circle in the plane of the X and Y axes.
  GeArc() = default;
  /// In the plane of the X and Y axes through `center`, from the X axis. See SetAngles.
  GeArc(const XYZ& center, double radius, double startAngle, double endAngle);
  /// `normal` and `refDir` need not have length 1, and of `refDir` only the part in the plane
  /// counts. What has no direction falls back to the Z axis and to the x axis of GePlane::GetAxes.
  /// A negative radius counts by its magnitude.
  GeArc(const XYZ& center, const XYZ& normal, const XYZ& refDir, double radius, double startAngle,
        double endAngle);
  static GeArc MakeCircle(const XYZ& center, const XYZ& normal, double radius);
  /// The arc from `a` through `b` to `c`. False, and `out` unchanged, when they lie on a line.
  [[nodiscard]] static bool ThroughPoints(const XYZ& a, const XYZ& b, const XYZ& c, GeArc& out);

  const XYZ& GetCenter() const { return center_; }
  const XYZ& GetNormal() const { return normal_; }
  const XYZ& GetRefDir() const { return refDir_; }
  double GetRadius() const { return radius_; }
  double GetStartAngle() const { return start_; }
  double GetEndAngle() const { return start_ + sweep_; }
  double GetSweep() const { return sweep_; }
  /// The sweep is what leads from start to end counter-clockwise; equal directions, within
  /// CMT::GetAngle(), give the full circle.
  void SetAngles(double startAngle, double endAngle);

  bool IsCircle() const;
  double GetLength() const { return radius_ * sweep_; }
  /// The point of the whole circle at `angle`.
  XYZ GetPointAt(double angle) const;
  XYZ GetStartPoint() const { return GetPointAt(GetStartAngle()); }
  XYZ GetEndPoint() const { return GetPointAt(GetEndAngle()); }
  /// Angle, between start and end angle, of the point of the arc that is closest to `point`; the
  /// start angle where all are equally close.
  double GetClosest(const XYZ& point) const;
  /// The smallest box around the arc.
  GeBox GetBounds() const;
  /// The same points in the opposite order, counter-clockwise about the opposite normal.
  void Reverse();
  /// Becomes its image. False, and nothing changes, when the image is no arc, see
  /// GeMatrix::IsSimilarity.
  [[nodiscard]] bool TransformBy(const GeMatrix& matrix);

 private:
  XYZ GetSideDir() const { return normal_.Cross(refDir_); }
  double GetOffset(double angle) const;

  XYZ center_;
  XYZ normal_ = {0, 0, 1};
  XYZ refDir_ = {1, 0, 0};
  double radius_ = 1.0;
  double start_ = 0.0;
  double sweep_ = 6.283185307179586476925286766559;
};
