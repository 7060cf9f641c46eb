// Curves of entities as points near enough to look at.
#pragma once

#include "platform/geometry/XYZ.h"

#include <vector>

namespace zdm {

struct Vertex {
  XYZ point;
  double bulge = 0.0;  // of the arc to the next one: tangent of a quarter of its angle
};

/// Along an ellipse of half axes `major` and `minor`, from one parameter to a greater one
/// (radians).
std::vector<XYZ> EllipsePoints(const XYZ& center, const XYZ& major, const XYZ& minor, double from,
                               double to);
std::vector<XYZ> PolylinePoints(const std::vector<Vertex>& vertices, bool isClosed);
/// A B-spline; its control points where knots and degree do not fit together.
std::vector<XYZ> SplinePoints(const std::vector<XYZ>& controls, const std::vector<double>& knots,
                              std::size_t degree);

}  // namespace zdm
