// A straight segment, as an object shows it.
#pragma once

#include "platform/geometry/GeLnSeg.h"
#include "platform/geometry/IGeCurve.h"

struct ZDM_INTERFACE IGeLnSeg : IGeCurve {
  virtual GeLnSeg GetLnSeg() = 0;                                // 5
  virtual void SetPoints(const XYZ& start, const XYZ& end) = 0;  // 6
};
