// Comparisons of geometry for tests, with messages that show the values.
#pragma once

#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/XYZ.h"

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const XYZ& p, std::ostream* out) {
  *out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
}

/// Within 1e-9, far below the tolerance of the library.
inline testing::AssertionResult IsNear(const XYZ& a, const XYZ& b) {
  if (a.GetDistance(b) < 1e-9) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << testing::PrintToString(a) << " against " << testing::PrintToString(b);
}

constexpr double kPi = 3.14159265358979323846;
