// The plain manager. It may be deleted while others refer to it, and what it refers to itself may
// be deleted too.
#pragma once

#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMObjMgr : public IZDMObjMgrImpl<IZDMObjMgr> {
  ZDM_OBJECT(CZDMObjMgr)
 public:
  CZDMObjMgr();
};
