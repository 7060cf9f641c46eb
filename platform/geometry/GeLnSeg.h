// A straight segment from one point to another, in drawing units.
#pragma once

#include "platform/geometry/GeBox.h"
#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/XYZ.h"

struct GeLnSeg {
  XYZ Start;
  XYZ End;

  const XYZ& GetStartPoint() const { return Start; }
  const XYZ& GetEndPoint() const { return End; }
  double GetLength() const { return Start.GetDistance(End); }
  /// `fraction` 0 is the start, exactly, and 1 the end.
  XYZ GetPointAt(double fraction) const { return Start * (1.0 - fraction) + End * fraction; }
  /// Fraction, 0 to 1, of the point that is closest to `point`; 0 for a segment without length.
  double GetClosest(const XYZ& point) const {
    // By the length twice rather than by its square, which may be out of range.
    const double length = GetLength();
    if (!(length > 0.0)) return 0.0;
    const double fraction = (point - Start).Dot((End - Start) / length) / length;
    return fraction > 0.0 ? (fraction < 1.0 ? fraction : 1.0) : 0.0;
  }
  GeBox GetBounds() const {
    GeBox box;
    box.UnionPointToSelf(Start);
    box.UnionPointToSelf(End);
    return box;
  }
  void Reverse() { *this = GeLnSeg{End, Start}; }
  void TransformBy(const GeMatrix& matrix) {
    Start = matrix.TransformPoint(Start);
    End = matrix.TransformPoint(End);
  }
};
