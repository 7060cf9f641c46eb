// A property that refers to a curve of the application's.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyCsCurve : IZProperty {
  /// Stored as it is: no reference is taken. Neither copied nor stored in streams.
  virtual void SetCurve(void* curve) = 0;  // 62
  virtual void* GetCurve() = 0;            // 63
};
