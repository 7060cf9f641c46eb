// The tolerances within which geometry counts as equal. A difference equal to its tolerance is a
// difference.
#pragma once

class CMT {
 public:
  /// Of distances and coordinates, in drawing units.
  static constexpr double GetDist() { return 1e-5; }
  /// Of directions: angles in radians, components of unit vectors, ratios of lengths. At a distance
  /// of 10000 drawing units it amounts to GetDist().
  static constexpr double GetAngle() { return 1e-9; }
};
