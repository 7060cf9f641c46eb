// A curve of any kind, as an object shows it. Everything that can be asked of a curve is asked of
// its value, see GeCurve.
#pragma once

#include "platform/core/IZObject.h"
#include "platform/geometry/GeCurve.h"
#include "platform/geometry/GeMatrix.h"

struct ZDM_INTERFACE IGeCurve : IZObject {
  /// The curve as segments and arcs: exact where it consists of them, otherwise nowhere further
  /// than `tolerance` drawing units from it.
  virtual GeCurve GetCurve(double tolerance) = 0;  // 3
  /// False, and nothing changes, when the image is no curve of this kind.
  virtual bool TransformBy(const GeMatrix& matrix) = 0;  // 4
};
