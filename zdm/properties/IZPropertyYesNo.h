// A switch.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyYesNo : IZProperty {
  /// False when the value is no flag.
  virtual bool GetYes() = 0;            // 62
  virtual void SetYes(bool value) = 0;  // 63
};
