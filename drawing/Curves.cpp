#include "drawing/Curves.h"

#include <algorithm>
#include <numbers>

namespace zdm {

namespace {

constexpr double kStep = std::numbers::pi / 32;  // between points of an arc

}  // namespace

std::vector<XYZ> EllipsePoints(const XYZ& center, const XYZ& major, const XYZ& minor, double from,
                               double to) {
  constexpr double kMostTurns = 2.0;
  std::vector<XYZ> points;
  const double sweep = std::min(to - from, kMostTurns * std::numbers::pi);
  if (!(sweep > 0.0)) return points;
  const int steps = static_cast<int>(std::ceil(sweep / kStep));
  for (int i = 0; i <= steps; ++i) {
    const double at = from + sweep * i / steps;
    points.push_back(center + major * std::cos(at) + minor * std::sin(at));
  }
  return points;
}

std::vector<XYZ> PolylinePoints(const std::vector<Vertex>& vertices, bool isClosed) {
  std::vector<XYZ> points;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const XYZ& from = vertices[i].point;
    points.push_back(from);
    const bool isLast = i + 1 == vertices.size();
    if (isLast && !isClosed) break;
    const XYZ& to = vertices[isLast ? 0 : i + 1].point;
    const double angle = 4.0 * std::atan(vertices[i].bulge);
    if (std::isfinite(angle) && std::abs(angle) > 1e-6) {
      const XYZ half = (to - from) * 0.5;
      const double rise = 1.0 / std::tan(angle / 2.0);
      const XYZ center = from + half + XYZ{-half.y, half.x, 0} * rise;
      const XYZ start = from - center;
      const int steps = static_cast<int>(std::ceil(std::abs(angle) / kStep));
      for (int step = 1; step < steps; ++step) {
        const double turn = angle * step / steps;
        points.push_back(center + start * std::cos(turn) +
                         XYZ{-start.y, start.x, 0} * std::sin(turn));
      }
    }
    if (isLast) points.push_back(to);
  }
  return points;
}

std::vector<XYZ> SplinePoints(const std::vector<XYZ>& controls, const std::vector<double>& knots,
                              std::size_t degree) {
  constexpr std::size_t kHighest = 15;
  constexpr int kSteps = 8;  // between two knots
  const bool fits = degree >= 1 && degree <= kHighest && controls.size() > degree &&
                    knots.size() == controls.size() + degree + 1 && std::ranges::is_sorted(knots);
  if (!fits) return controls;
  std::vector<XYZ> points;
  std::vector<XYZ> work(degree + 1);
  for (std::size_t span = degree; span < controls.size(); ++span) {
    if (!(knots[span] < knots[span + 1])) continue;
    for (int step = points.empty() ? 0 : 1; step <= kSteps; ++step) {
      const double at = knots[span] + (knots[span + 1] - knots[span]) * step / kSteps;
      for (std::size_t i = 0; i <= degree; ++i) work[i] = controls[span - degree + i];
      for (std::size_t level = 1; level <= degree; ++level) {
        for (std::size_t i = degree; i >= level; --i) {
          const double low = knots[span - degree + i];
          const double width = knots[span + 1 + i - level] - low;
          const double part = width > 0.0 ? (at - low) / width : 0.0;
          work[i] = work[i - 1] * (1.0 - part) + work[i] * part;
        }
      }
      points.push_back(work[degree]);
    }
  }
  return points;
}

}  // namespace zdm
