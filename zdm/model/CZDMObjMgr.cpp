#include "zdm/model/CZDMObjMgr.h"

#include "zdm/identity/ObjectOptions.h"

template class IZDMObjectImpl<IZDMObjMgr>;
template class IZDMObjMgrImpl<IZDMObjMgr>;

ZDM_OBJECT_BODY(CZDMObjMgr)

CZDMObjMgr::CZDMObjMgr() { ClearOptionAllowed(zdm::kKeptWhileReferenced | zdm::kReferencesCount); }
