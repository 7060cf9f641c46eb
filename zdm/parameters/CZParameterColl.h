// A plain list of parameters, over the list that all collections share.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterColl.h"

class ZDM_API CZParameterColl : public IZListImpl<IZParameterColl, IZParameter> {
  ZDM_OBJECT(CZParameterColl)
};
