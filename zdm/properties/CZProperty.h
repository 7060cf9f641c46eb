// The plain property.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"

class ZDM_API CZProperty : public IZPropertyImpl<IZProperty> {
  ZDM_OBJECT(CZProperty)
};
