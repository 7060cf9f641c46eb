#include "platform/geometry/GeArc.h"

#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/GePlane.h"

#include <initializer_list>
#include <numbers>

namespace {

constexpr double kFullTurn = 2.0 * std::numbers::pi;

// The same direction as an angle of at least 0 and at most a full turn.
double ToOneTurn(double angle) {
  const double rest = std::fmod(angle, kFullTurn);
  return rest < 0.0 ? rest + kFullTurn : rest;
}

}  // namespace

GeArc::GeArc(const XYZ& center, double radius, double startAngle, double endAngle)
    : GeArc(center, {0, 0, 1}, {1, 0, 0}, radius, startAngle, endAngle) {}

GeArc::GeArc(const XYZ& center, const XYZ& normal, const XYZ& refDir, double radius,
             double startAngle, double endAngle)
    : center_(center), radius_(std::fabs(radius)) {
  const GePlane plane(center, normal);
  normal_ = plane.GetNormal();
  XYZ ref = refDir;
  const bool hasDirection = ref.Normalize();
  ref -= normal_ * normal_.Dot(ref);
  if (hasDirection && ref.GetLength() > CMT::GetAngle() && ref.Normalize()) {
    refDir_ = ref;
  } else {
    XYZ side;
    plane.GetAxes(refDir_, side);
  }
  SetAngles(startAngle, endAngle);
}

GeArc GeArc::MakeCircle(const XYZ& center, const XYZ& normal, double radius) {
  return {center, normal, XYZ(), radius, 0.0, kFullTurn};
}

bool GeArc::ThroughPoints(const XYZ& a, const XYZ& b, const XYZ& c, GeArc& out) {
  GePlane plane;
  if (!GePlane::ThroughPoints(a, b, c, plane)) return false;
  const XYZ ab = b - a;
  const XYZ ac = c - a;
  const XYZ across = ab.Cross(ac);
  const XYZ toCenter =
      (across.Cross(ab) * ac.Dot(ac) + ac.Cross(across) * ab.Dot(ab)) / (2.0 * across.Dot(across));
  if (!toCenter.IsFinite()) return false;
  GeArc arc(a + toCenter, plane.GetNormal(), -toCenter, toCenter.GetLength(), 0.0, 0.0);
  const XYZ end = c - arc.center_;
  arc.SetAngles(0.0, std::atan2(arc.GetSideDir().Dot(end), arc.refDir_.Dot(end)));
  out = arc;
  return true;
}

void GeArc::SetAngles(double startAngle, double endAngle) {
  start_ = startAngle;
  sweep_ = ToOneTurn(endAngle - startAngle);
  if (sweep_ < CMT::GetAngle() || kFullTurn - sweep_ < CMT::GetAngle()) sweep_ = kFullTurn;
}

bool GeArc::IsCircle() const { return sweep_ == kFullTurn; }

XYZ GeArc::GetPointAt(double angle) const {
  return center_ + (refDir_ * std::cos(angle) + GetSideDir() * std::sin(angle)) * radius_;
}

// From the start counter-clockwise to the direction of `angle`.
double GeArc::GetOffset(double angle) const { return ToOneTurn(angle - start_); }

double GeArc::GetClosest(const XYZ& point) const {
  const XYZ d = point - center_;
  const double x = refDir_.Dot(d);
  const double y = GetSideDir().Dot(d);
  if (x == 0.0 && y == 0.0) return start_;
  const double offset = GetOffset(std::atan2(y, x));
  if (offset <= sweep_) return start_ + offset;
  // In the gap the nearer end is the one across the smaller part of it.
  return offset - sweep_ < kFullTurn - offset ? GetEndAngle() : start_;
}

GeBox GeArc::GetBounds() const {
  GeBox box;
  box.UnionPointToSelf(GetStartPoint());
  box.UnionPointToSelf(GetEndPoint());
  const XYZ side = GetSideDir();
  // Along each axis a circle is extreme at two opposite angles.
  for (const double extreme : {std::atan2(side.x, refDir_.x), std::atan2(side.y, refDir_.y),
                               std::atan2(side.z, refDir_.z)}) {
    for (const double angle : {extreme, extreme + std::numbers::pi}) {
      if (GetOffset(angle) <= sweep_) box.UnionPointToSelf(GetPointAt(angle));
    }
  }
  return box;
}

void GeArc::Reverse() {
  start_ = -GetEndAngle();
  normal_ = -normal_;
}

bool GeArc::TransformBy(const GeMatrix& matrix) {
  double scale = 0.0;
  if (!matrix.IsSimilarity(&scale)) return false;
  // Counter-clockwise about the new normal, also when the map mirrors.
  const XYZ side = matrix.TransformVector(GetSideDir()) / scale;
  refDir_ = matrix.TransformVector(refDir_) / scale;
  normal_ = refDir_.Cross(side);
  center_ = matrix.TransformPoint(center_);
  radius_ *= scale;
  return true;
}
