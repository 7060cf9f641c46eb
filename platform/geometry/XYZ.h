// A point or a vector: three coordinates in drawing units, laid out as double[3].
// Arithmetic follows IEEE rules; comparisons within a tolerance are false for anything not finite.
#pragma once

#include "platform/geometry/CMT.h"

#include <cfloat>
#include <cmath>
#include <type_traits>

struct XYZ {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  static constexpr XYZ FromArray(const double values[3]) {
    return {values[0], values[1], values[2]};
  }
  constexpr void ToArray(double values[3]) const {
    values[0] = x;
    values[1] = y;
    values[2] = z;
  }

  /// Exact, coordinate by coordinate.
  friend constexpr bool operator==(const XYZ&, const XYZ&) = default;
  friend constexpr XYZ operator+(const XYZ& a, const XYZ& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
  }
  friend constexpr XYZ operator-(const XYZ& a, const XYZ& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend constexpr XYZ operator-(const XYZ& a) { return {-a.x, -a.y, -a.z}; }
  friend constexpr XYZ operator*(const XYZ& a, double f) { return {a.x * f, a.y * f, a.z * f}; }
  friend constexpr XYZ operator*(double f, const XYZ& a) { return a * f; }
  friend constexpr XYZ operator/(const XYZ& a, double f) { return {a.x / f, a.y / f, a.z / f}; }
  constexpr XYZ& operator+=(const XYZ& other) { return *this = *this + other; }
  constexpr XYZ& operator-=(const XYZ& other) { return *this = *this - other; }
  constexpr XYZ& operator*=(double factor) { return *this = *this * factor; }

  constexpr double Dot(const XYZ& other) const { return x * other.x + y * other.y + z * other.z; }
  /// Right-handed: the X axis crossed with the Y axis is the Z axis.
  constexpr XYZ Cross(const XYZ& other) const {
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
  }
  double GetLength() const { return std::hypot(x, y, z); }
  double GetDistance(const XYZ& other) const { return (*this - other).GetLength(); }
  bool IsFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
  /// True when the points are less than `tolerance` apart.
  bool IsSame(const XYZ& other, double tolerance = CMT::GetDist()) const {
    return GetDistance(other) < tolerance;
  }
  /// Makes the length 1. False, and nothing changes, for a vector without a direction: zero or not
  /// finite.
  [[nodiscard]] bool Normalize() {
    const double length = GetLength();
    if (!(length >= DBL_MIN && length <= DBL_MAX)) return false;
    *this = *this / length;
    return true;
  }
};

static_assert(std::is_standard_layout_v<XYZ> && std::is_trivially_copyable_v<XYZ>);
static_assert(sizeof(XYZ) == 3 * sizeof(double));
