// A plane, as an object shows it.
#pragma once

#include "platform/core/IZObject.h"
#include "platform/geometry/GeMatrix.h"
#include "platform/geometry/GePlane.h"

struct ZDM_INTERFACE IGePlane : IZObject {
  virtual GePlane GetPlane() = 0;                   // 3
  virtual void SetPlane(const GePlane& plane) = 0;  // 4
  /// False, and nothing changes, when the image is no plane.
  virtual bool TransformBy(const GeMatrix& matrix) = 0;  // 5
};
