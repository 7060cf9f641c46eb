#include "document/CZDMMaterialMgr.h"

#include "zdm/identity/ObjectOptions.h"

ZDM_OBJECT_BODY(CZDMMaterialMgr)

CZDMMaterialMgr::CZDMMaterialMgr() {
  SetName(OLESTR("*ZMaterialMgr"));
  ClearOptionAllowed(zdm::kKeptWhileReferenced | zdm::kReferencesCount);
}
