// The plain parameter: what arrays of parameters hold.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterImpl.h"

class ZDM_API CZParameter : public IZParameterImpl<IZParameter> {
  ZDM_OBJECT(CZParameter)
 public:
  virtual bool IsDumpRef() { return false; }
};
