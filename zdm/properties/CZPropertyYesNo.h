// The yes/no property.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyYesNo.h"

class ZDM_API CZPropertyYesNo : public IZPropertyImpl<IZPropertyYesNo> {
  ZDM_OBJECT(CZPropertyYesNo)
 public:
  bool GetYes() override { return GetBool(); }
  void SetYes(bool value) override { SetBool(value); }
};
