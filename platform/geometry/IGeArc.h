// A circular arc, as an object shows it.
#pragma once

#include "platform/geometry/GeArc.h"
#include "platform/geometry/IGeCurve.h"

struct ZDM_INTERFACE IGeArc : IGeCurve {
  virtual GeArc GetArc() = 0;                 // 5
  virtual void SetArc(const GeArc& arc) = 0;  // 6
};
