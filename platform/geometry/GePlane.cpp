#include "platform/geometry/GePlane.h"

#include "platform/geometry/GeMatrix.h"

namespace {

// Direction of a x b. False when the two are parallel or one has no direction.
bool CrossDirection(XYZ a, XYZ b, XYZ& out) {
  if (!a.Normalize() || !b.Normalize()) return false;
  XYZ cross = a.Cross(b);
  if (!(cross.GetLength() > CMT::GetAngle()) || !cross.Normalize()) return false;
  out = cross;
  return true;
}

}  // namespace

GePlane::GePlane(const XYZ& origin, const XYZ& normal) : origin_(origin), normal_(normal) {
  if (!normal_.Normalize()) normal_ = {0, 0, 1};
}

bool GePlane::ThroughPoints(const XYZ& a, const XYZ& b, const XYZ& c, GePlane& out) {
  XYZ normal;
  if (!CrossDirection(b - a, c - a, normal)) return false;
  out = GePlane(a, normal);
  return true;
}

void GePlane::GetAxes(XYZ& xAxis, XYZ& yAxis) const {
  constexpr double kSteep = 1.0 / 64.0;
  const bool isSteep = std::fabs(normal_.x) < kSteep && std::fabs(normal_.y) < kSteep;
  XYZ x = (isSteep ? XYZ{0, 1, 0} : XYZ{0, 0, 1}).Cross(normal_);
  x = x / x.GetLength();
  xAxis = x;
  yAxis = normal_.Cross(x);
}

bool GePlane::IntersectLine(const XYZ& point, const XYZ& direction, XYZ& out) const {
  XYZ unit = direction;
  if (!unit.Normalize()) return false;
  const double rise = normal_.Dot(unit);
  if (!(std::fabs(rise) > CMT::GetAngle())) return false;
  out = point - unit * (GetSignedDistance(point) / rise);
  return true;
}

bool GePlane::IsSame(const GePlane& other) const {
  return normal_.IsSame(other.normal_, CMT::GetAngle()) &&
         std::fabs(GetSignedDistance(other.origin_)) < CMT::GetDist();
}

bool GePlane::TransformBy(const GeMatrix& matrix) {
  XYZ x;
  XYZ y;
  GetAxes(x, y);
  XYZ normal;
  if (!CrossDirection(matrix.TransformVector(x), matrix.TransformVector(y), normal)) return false;
  if (normal.Dot(matrix.TransformVector(normal_)) < 0.0) normal = -normal;
  origin_ = matrix.TransformPoint(origin_);
  normal_ = normal;
  return true;
}
