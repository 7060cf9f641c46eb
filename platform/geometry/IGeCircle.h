// A full circle, as an object shows it.
#pragma once

#include "platform/geometry/GeArc.h"
#include "platform/geometry/IGeCurve.h"

struct ZDM_INTERFACE IGeCircle : IGeCurve {
  /// The circle, from the reference direction once round.
  virtual GeArc GetCircle() = 0;  // 5
  /// `normal` need not have length 1.
  virtual void SetCircle(const XYZ& center, const XYZ& normal, double radius) = 0;  // 6
};
