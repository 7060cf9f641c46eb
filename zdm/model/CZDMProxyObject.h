// The plain proxy; see IZProxyObjectImpl.h.
#pragma once

#include "zdm/model/IZProxyObjectImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMProxyObject : public IZProxyObjectImpl<IZDMProxyObject, IZDMObject> {
  ZDM_OBJECT(CZDMProxyObject)
 public:
  virtual bool IsDumpRef() { return false; }
};
