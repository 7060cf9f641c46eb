// A point, as an object shows it.
#pragma once

#include "platform/core/IZObject.h"
#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/XYZ.h"

struct ZDM_INTERFACE IGePt : IZObject {
  virtual XYZ GetPoint() = 0;                            // 3
  virtual void SetPoint(const XYZ& point) = 0;           // 4
  virtual void TransformBy(const GeMatrix& matrix) = 0;  // 5
};
