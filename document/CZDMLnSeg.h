// A straight segment on display.
#pragma once

#include "document/ClassTable.h"
#include "document/CurveObject.h"
#include "platform/geometry/IGeLnSeg.h"

namespace zdm {

/// Numbers: start x, y, z, end x, y, z.
struct LnSegKind {
  using Interface = IGeLnSeg;
  using Shape = GeLnSeg;
  static constexpr std::size_t kNumbers = 6;

  static GeLnSeg ShapeOf(IGeLnSeg& line) { return line.GetLnSeg(); }
  static std::array<double, kNumbers> ToNumbers(const GeLnSeg& line) {
    return {line.Start.x, line.Start.y, line.Start.z, line.End.x, line.End.y, line.End.z};
  }
  static GeLnSeg FromNumbers(const std::array<double, kNumbers>& n) {
    return {{n[0], n[1], n[2]}, {n[3], n[4], n[5]}};
  }
  static bool Map(GeLnSeg& line, const GeMatrix& matrix) {
    line.TransformBy(matrix);
    return true;
  }
};

}  // namespace zdm

class CZDMLnSeg : public CurveObject<zdm::LnSegKind> {
  ZDM_OBJECT(CZDMLnSeg)
 public:
  GeLnSeg GetLnSeg() override { return GetShape(); }
  void SetPoints(const XYZ& start, const XYZ& end) override { SetShape({start, end}); }
};
