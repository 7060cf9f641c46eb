// The property of a coordinate triple.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyXYZ.h"

class ZDM_API CZPropertyXYZ : public IZPropertyImpl<IZPropertyXYZ> {
  ZDM_OBJECT(CZPropertyXYZ)
};
