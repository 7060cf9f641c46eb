#include "platform/geometry/GeCurve.h"

#include <algorithm>
#include <limits>

namespace {

// The pieces answer alike, except that a segment counts its points by fractions of its length and
// an arc by angles.
double DistanceOf(const GeLnSeg& segment, double fraction) {
  return fraction * segment.GetLength();
}
double DistanceOf(const GeArc& arc, double angle) {
  return (angle - arc.GetStartAngle()) * arc.GetRadius();
}
double ParameterAt(const GeLnSeg& segment, double distance) {
  const double length = segment.GetLength();
  return length > 0.0 ? distance / length : 0.0;
}
double ParameterAt(const GeArc& arc, double distance) {
  const double radius = arc.GetRadius();
  return arc.GetStartAngle() + (radius > 0.0 ? distance / radius : 0.0);
}

double LengthOf(const GeCurve::Piece& piece) {
  return std::visit([](const auto& p) { return p.GetLength(); }, piece);
}
XYZ StartOf(const GeCurve::Piece& piece) {
  return std::visit([](const auto& p) -> XYZ { return p.GetStartPoint(); }, piece);
}
XYZ EndOf(const GeCurve::Piece& piece) {
  return std::visit([](const auto& p) -> XYZ { return p.GetEndPoint(); }, piece);
}

}  // namespace

GeCurve GeCurve::MakePolyline(const std::vector<XYZ>& points, bool isClosed) {
  GeCurve curve;
  if (points.size() < 2) return curve;
  curve.pieces_.reserve(points.size());
  for (std::size_t i = 1; i < points.size(); ++i) {
    curve.pieces_.emplace_back(GeLnSeg{points[i - 1], points[i]});
  }
  if (isClosed) curve.pieces_.emplace_back(GeLnSeg{points.back(), points.front()});
  return curve;
}

bool GeCurve::Append(const Piece& piece) {
  if (!pieces_.empty() && !EndOf(pieces_.back()).IsSame(StartOf(piece))) return false;
  pieces_.push_back(piece);
  return true;
}

bool GeCurve::IsClosed() const { return !pieces_.empty() && GetStartPoint().IsSame(GetEndPoint()); }

double GeCurve::GetLength() const {
  double length = 0.0;
  for (const Piece& piece : pieces_) length += LengthOf(piece);
  return length;
}

XYZ GeCurve::GetStartPoint() const { return pieces_.empty() ? XYZ() : StartOf(pieces_.front()); }

XYZ GeCurve::GetEndPoint() const { return pieces_.empty() ? XYZ() : EndOf(pieces_.back()); }

XYZ GeCurve::GetPointAt(double distance) const {
  if (!(distance > 0.0)) return GetStartPoint();
  for (const Piece& piece : pieces_) {
    const double length = LengthOf(piece);
    if (distance <= length) {
      return std::visit([&](const auto& p) { return p.GetPointAt(ParameterAt(p, distance)); },
                        piece);
    }
    distance -= length;
  }
  return GetEndPoint();
}

XYZ GeCurve::GetClosestPoint(const XYZ& point, double* distance) const {
  XYZ closest = GetStartPoint();
  double closestAt = 0.0;
  double gap = std::numeric_limits<double>::infinity();
  double before = 0.0;
  for (const Piece& piece : pieces_) {
    std::visit(
        [&](const auto& p) {
          const double parameter = p.GetClosest(point);
          const XYZ candidate = p.GetPointAt(parameter);
          const double candidateGap = candidate.GetDistance(point);
          if (candidateGap < gap) {
            gap = candidateGap;
            closest = candidate;
            closestAt = before + DistanceOf(p, parameter);
          }
          before += p.GetLength();
        },
        piece);
  }
  if (distance != nullptr) *distance = closestAt;
  return closest;
}

GeBox GeCurve::GetBounds() const {
  GeBox box;
  for (const Piece& piece : pieces_) {
    box.UnionBoxToSelf(std::visit([](const auto& p) { return p.GetBounds(); }, piece));
  }
  return box;
}

void GeCurve::Reverse() {
  std::reverse(pieces_.begin(), pieces_.end());
  for (Piece& piece : pieces_) std::visit([](auto& p) { p.Reverse(); }, piece);
}

bool GeCurve::TransformBy(const GeMatrix& matrix) {
  const bool hasArc = std::any_of(pieces_.begin(), pieces_.end(), [](const Piece& piece) {
    return std::holds_alternative<GeArc>(piece);
  });
  if (hasArc && !matrix.IsSimilarity()) return false;
  for (Piece& piece : pieces_) {
    std::visit([&](auto& p) { (void)p.TransformBy(matrix); }, piece);
  }
  return true;
}
