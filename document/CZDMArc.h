// A circular arc on display.
#pragma once

#include "document/ArcNumbers.h"
#include "document/ClassTable.h"
#include "document/CurveObject.h"
#include "platform/geometry/IGeArc.h"

namespace zdm {

/// Numbers: see ArcToNumbers.
struct ArcKind {
  using Interface = IGeArc;
  using Shape = GeArc;
  static constexpr std::size_t kNumbers = kArcNumbers;

  static GeArc ShapeOf(IGeArc& arc) { return arc.GetArc(); }
  static std::array<double, kNumbers> ToNumbers(const GeArc& arc) { return ArcToNumbers(arc); }
  static GeArc FromNumbers(const std::array<double, kNumbers>& n) { return ArcFromNumbers(n); }
  static bool Map(GeArc& arc, const GeMatrix& matrix) { return arc.TransformBy(matrix); }
};

}  // namespace zdm

class CZDMArc : public CurveObject<zdm::ArcKind> {
  ZDM_OBJECT(CZDMArc)
 public:
  GeArc GetArc() override { return GetShape(); }
  void SetArc(const GeArc& arc) override { SetShape(arc); }
};
