// A full circle on display.
#pragma once

#include "document/ArcNumbers.h"
#include "document/ClassTable.h"
#include "document/CurveObject.h"
#include "platform/geometry/IGeCircle.h"

namespace zdm {

/// Numbers: those of the arc from the reference direction once round, without its angles.
struct CircleKind {
  using Interface = IGeCircle;
  using Shape = GeArc;
  static constexpr std::size_t kNumbers = kArcNumbers - 2;

  static GeArc ShapeOf(IGeCircle& circle) { return circle.GetCircle(); }
  static std::array<double, kNumbers> ToNumbers(const GeArc& circle);
  static GeArc FromNumbers(const std::array<double, kNumbers>& numbers);
  static bool Map(GeArc& circle, const GeMatrix& matrix) { return circle.TransformBy(matrix); }
};

}  // namespace zdm

class CZDMCircle : public CurveObject<zdm::CircleKind> {
  ZDM_OBJECT(CZDMCircle)
 public:
  GeArc GetCircle() override { return GetShape(); }
  void SetCircle(const XYZ& center, const XYZ& normal, double radius) override {
    SetShape(GeArc::MakeCircle(center, normal, radius));
  }
};
