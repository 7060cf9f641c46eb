#include "platform/geometry/GeMatrix.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr XYZ kAxes[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
constexpr double kFlat = 1e-12;  // volume over the product of the edges, below which there is none

double LargestMagnitude(const XYZ& v) {
  return std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
}

bool IsNear(const XYZ& a, const XYZ& b, double tolerance) {
  const XYZ d = a - b;
  return std::fabs(d.x) < tolerance && std::fabs(d.y) < tolerance && std::fabs(d.z) < tolerance;
}

}  // namespace

GeMatrix::GeMatrix(const double rows[][3]) {
  for (int i = 0; i < 4; ++i) rows_[i] = XYZ::FromArray(rows[i]);
}

GeMatrix::GeMatrix(const double rows[][4]) {
  const double w = rows[3][3];
  const double divisor = std::isfinite(w) && w != 0.0 ? w : 1.0;
  for (int i = 0; i < 4; ++i) rows_[i] = XYZ::FromArray(rows[i]) / divisor;
}

GeMatrix GeMatrix::MakeTranslation(const XYZ& offset) {
  GeMatrix result;
  result.rows_[3] = offset;
  return result;
}

GeMatrix GeMatrix::MakeRotation(const XYZ& point, const XYZ& axis, double angle) {
  GeMatrix result;
  XYZ a = axis;
  if (!a.Normalize()) return result;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (int i = 0; i < 3; ++i) {
    const XYZ& e = kAxes[i];
    result.rows_[i] = e * c + a.Cross(e) * s + a * (a.Dot(e) * (1.0 - c));
  }
  result.rows_[3] = point - result.TransformVector(point);
  return result;
}

GeMatrix GeMatrix::MakeScale(const XYZ& center, double factor) {
  return MakeScale(center, {factor, factor, factor});
}

GeMatrix GeMatrix::MakeScale(const XYZ& center, const XYZ& factors) {
  return MakeFrame(
      {center.x * (1.0 - factors.x), center.y * (1.0 - factors.y), center.z * (1.0 - factors.z)},
      kAxes[0] * factors.x, kAxes[1] * factors.y, kAxes[2] * factors.z);
}

GeMatrix GeMatrix::MakeMirror(const XYZ& point, const XYZ& normal) {
  GeMatrix result;
  XYZ n = normal;
  if (!n.Normalize()) return result;
  for (int i = 0; i < 3; ++i) result.rows_[i] = kAxes[i] - n * (2.0 * n.Dot(kAxes[i]));
  result.rows_[3] = n * (2.0 * n.Dot(point));
  return result;
}

GeMatrix GeMatrix::MakeFrame(const XYZ& origin, const XYZ& xAxis, const XYZ& yAxis,
                             const XYZ& zAxis) {
  GeMatrix result;
  result.rows_[0] = xAxis;
  result.rows_[1] = yAxis;
  result.rows_[2] = zAxis;
  result.rows_[3] = origin;
  return result;
}

void GeMatrix::SetUnit() {
  std::copy(std::begin(kAxes), std::end(kAxes), rows_);
  rows_[3] = XYZ();
}

bool GeMatrix::IsSame(const GeMatrix& other) const {
  for (int i = 0; i < 3; ++i) {
    if (!IsNear(rows_[i], other.rows_[i], CMT::GetAngle())) return false;
  }
  return IsNear(rows_[3], other.rows_[3], CMT::GetDist());
}

GeMatrix operator*(const GeMatrix& first, const GeMatrix& second) {
  GeMatrix result;
  for (int i = 0; i < 3; ++i) result.rows_[i] = second.TransformVector(first.rows_[i]);
  result.rows_[3] = second.TransformPoint(first.rows_[3]);
  return result;
}

bool GeMatrix::GetInverse(GeMatrix& inverse) const {
  // Rows of magnitude 1 keep the determinant in range and the test free of units.
  double scale[3];
  XYZ row[3];
  for (int i = 0; i < 3; ++i) {
    scale[i] = LargestMagnitude(rows_[i]);
    if (!(scale[i] > 0.0)) return false;
    row[i] = rows_[i] / scale[i];
  }
  const XYZ column[3] = {row[1].Cross(row[2]), row[2].Cross(row[0]), row[0].Cross(row[1])};
  const double determinant = row[0].Dot(column[0]);
  const double edges = row[0].GetLength() * row[1].GetLength() * row[2].GetLength();
  if (!(std::fabs(determinant) > kFlat * edges)) return false;

  const XYZ a = column[0] / determinant / scale[0];
  const XYZ b = column[1] / determinant / scale[1];
  const XYZ c = column[2] / determinant / scale[2];
  GeMatrix result = MakeFrame(XYZ(), {a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z});
  result.rows_[3] = -result.TransformVector(rows_[3]);
  for (const XYZ& r : result.rows_) {
    if (!r.IsFinite()) return false;
  }
  inverse = result;
  return true;
}

double GeMatrix::GetDeterminant() const { return rows_[0].Dot(rows_[1].Cross(rows_[2])); }

bool GeMatrix::IsSimilarity(double* scale) const {
  const double length = rows_[0].GetLength();
  if (!(length >= DBL_MIN && length <= DBL_MAX)) return false;
  const XYZ row[3] = {rows_[0] / length, rows_[1] / length, rows_[2] / length};
  for (int i = 0; i < 3; ++i) {
    const double change = row[i].GetLength() - 1.0;
    const double cosine = row[i].Dot(row[(i + 1) % 3]);
    if (!(std::fabs(change) < CMT::GetAngle() && std::fabs(cosine) < CMT::GetAngle())) return false;
  }
  if (scale != nullptr) *scale = length;
  return true;
}

void GeMatrix::GetRows(double rows[][3]) const {
  for (int i = 0; i < 4; ++i) rows_[i].ToArray(rows[i]);
}

void GeMatrix::GetRows(double rows[][4]) const {
  for (int i = 0; i < 4; ++i) {
    rows_[i].ToArray(rows[i]);
    rows[i][3] = i == 3 ? 1.0 : 0.0;
  }
}
