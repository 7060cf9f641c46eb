#include "platform/geometry/GeBox.h"

#include "platform/geometry/GeMatrix.h"

namespace {

constexpr double kEmpty = 1e20;

// The argument that is kept when the other is not a number comes first.
constexpr double Smaller(double kept, double other) { return other < kept ? other : kept; }
constexpr double Larger(double kept, double other) { return other > kept ? other : kept; }

XYZ Smaller(const XYZ& kept, const XYZ& other) {
  return {Smaller(kept.x, other.x), Smaller(kept.y, other.y), Smaller(kept.z, other.z)};
}

XYZ Larger(const XYZ& kept, const XYZ& other) {
  return {Larger(kept.x, other.x), Larger(kept.y, other.y), Larger(kept.z, other.z)};
}

// Also for equal infinities, whose difference is not a number.
constexpr bool Reaches(double high, double low, double tolerance) {
  return high >= low || low - high < tolerance;
}

}  // namespace

void GeBox::SetEmpty() {
  min_ = {kEmpty, kEmpty, kEmpty};
  max_ = {-kEmpty, -kEmpty, -kEmpty};
}

void GeBox::GetBox(double box[6]) const {
  min_.ToArray(box);
  max_.ToArray(box + 3);
}

void GeBox::UnionBoxToSelf(const double box[6]) {
  UnionBoxToSelf(GeBox(XYZ::FromArray(box), XYZ::FromArray(box + 3)));
}

void GeBox::UnionBoxToSelf(double minX, double minY, double minZ, double maxX, double maxY,
                           double maxZ) {
  UnionBoxToSelf(GeBox({minX, minY, minZ}, {maxX, maxY, maxZ}));
}

void GeBox::UnionBoxToSelf(const GeBox& other) {
  min_ = Smaller(min_, other.min_);
  max_ = Larger(max_, other.max_);
}

void GeBox::UnionPointToSelf(const XYZ& point) { UnionBoxToSelf(GeBox(point, point)); }

bool GeBox::IsEmpty() const { return !(min_.x <= max_.x && min_.y <= max_.y && min_.z <= max_.z); }

XYZ GeBox::GetSize() const { return IsEmpty() ? XYZ() : max_ - min_; }

bool GeBox::Contains(const XYZ& point, double tolerance) const {
  return Intersects(GeBox(point, point), tolerance);
}

bool GeBox::Intersects(const GeBox& other, double tolerance) const {
  return !IsEmpty() && !other.IsEmpty() &&  //
         Reaches(max_.x, other.min_.x, tolerance) && Reaches(other.max_.x, min_.x, tolerance) &&
         Reaches(max_.y, other.min_.y, tolerance) && Reaches(other.max_.y, min_.y, tolerance) &&
         Reaches(max_.z, other.min_.z, tolerance) && Reaches(other.max_.z, min_.z, tolerance);
}

void GeBox::TransformBy(const GeMatrix& matrix) {
  if (IsEmpty()) return;
  const GeBox before = *this;
  SetEmpty();
  for (unsigned corner = 0; corner < 8; ++corner) {
    UnionPointToSelf(matrix.TransformPoint({(corner & 1) != 0 ? before.max_.x : before.min_.x,
                                            (corner & 2) != 0 ? before.max_.y : before.min_.y,
                                            (corner & 4) != 0 ? before.max_.z : before.min_.z}));
  }
}
