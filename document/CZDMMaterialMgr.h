// The manager of a document's materials, which finds them by name. It may be deleted while others
// refer to it, and what it refers to itself may be deleted too.
#pragma once

#include "document/ClassTable.h"
#include "zdm/model/IZDMObjMgrImpl.h"

class CZDMMaterialMgr : public IZDMObjMgrImpl<IZDMObjMgr> {
  ZDM_OBJECT(CZDMMaterialMgr)
 public:
  /// Named "*ZMaterialMgr".
  CZDMMaterialMgr();
};
