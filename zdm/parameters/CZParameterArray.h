// The parameters of one object.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterArrayImpl.h"

class ZDM_API CZParameterArray : public IZParameterArrayImpl {
  ZDM_OBJECT(CZParameterArray)
};
