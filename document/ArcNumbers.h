// An arc as the numbers that are stored for it.
#pragma once

#include "platform/geometry/GeArc.h"

#include <array>

namespace zdm {

constexpr std::size_t kArcNumbers = 12;

/// Centre x, y, z; normal x, y, z; reference direction x, y, z; radius; start and end angle.
inline std::array<double, kArcNumbers> ArcToNumbers(const GeArc& arc) {
  const XYZ& center = arc.GetCenter();
  const XYZ& normal = arc.GetNormal();
  const XYZ& refDir = arc.GetRefDir();
  return {center.x,
          center.y,
          center.z,
          normal.x,
          normal.y,
          normal.z,
          refDir.x,
          refDir.y,
          refDir.z,
          arc.GetRadius(),
          arc.GetStartAngle(),
          arc.GetEndAngle()};
}

inline GeArc ArcFromNumbers(const std::array<double, kArcNumbers>& n) {
  return {{n[0], n[1], n[2]}, {n[3], n[4], n[5]}, {n[6], n[7], n[8]}, n[9], n[10], n[11]};
}

}  // namespace zdm
