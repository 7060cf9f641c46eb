// The curve property.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyCsCurve.h"
#include "zdm/properties/IZPropertyImpl.h"

class ZDM_API CZPropertyCsCurve : public IZPropertyImpl<IZPropertyCsCurve> {
  ZDM_OBJECT(CZPropertyCsCurve)
 public:
  void SetCurve(void* curve) override { curve_ = curve; }
  void* GetCurve() override { return curve_; }

 private:
  void* curve_ = nullptr;  // no reference
};
