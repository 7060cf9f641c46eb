// A connected curve of straight segments and arcs, in order: each piece starts where the one before
// ends, within CMT::GetDist() when it is appended (a map that enlarges, enlarges gaps too). Places
// on it are named by their distance from the start, along the curve, in drawing units.
#pragma once

#include "platform/Export.h"
#include "platform/geometry/GeArc.h"
#include "platform/geometry/GeLnSeg.h"

#include <variant>
#include <vector>

class ZDM_API GeCurve {
 public:
  using Piece = std::variant<GeLnSeg, GeArc>;

  /// Without pieces: of length 0, with empty bounds; its points are (0, 0, 0).
  GeCurve() = default;
  explicit GeCurve(const GeLnSeg& segment) : pieces_{segment} {}
  explicit GeCurve(const GeArc& arc) : pieces_{arc} {}
  /// Segments through `points` in order, and back to the first when `isClosed`. Fewer than two
  /// points give no pieces.
  static GeCurve MakePolyline(const std::vector<XYZ>& points, bool isClosed);

  /// False, and nothing changes, when `piece` does not start at the end of the curve.
  [[nodiscard]] bool Append(const Piece& piece);
  const std::vector<Piece>& GetPieces() const { return pieces_; }
  bool IsEmpty() const { return pieces_.empty(); }
  /// True when the curve ends at its start.
  bool IsClosed() const;

  double GetLength() const;
  XYZ GetStartPoint() const;
  XYZ GetEndPoint() const;
  /// The point at `distance`; the start for one below 0, the end for one above the length.
  XYZ GetPointAt(double distance) const;
  /// The point that is closest to `point` (the first of several); its distance from the start goes
  /// to `*distance` (may be null).
  XYZ GetClosestPoint(const XYZ& point, double* distance = nullptr) const;
  /// The smallest box around the curve.
  GeBox GetBounds() const;
  /// The same points in the opposite order.
  void Reverse();
  /// Becomes its image. False, and nothing changes, when there is an arc whose image is no arc.
  [[nodiscard]] bool TransformBy(const GeMatrix& matrix);

 private:
  std::vector<Piece> pieces_;
};
