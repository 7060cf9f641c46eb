// The dictionary: a plain manager in everything but its class.
#pragma once

#include "zdm/model/IZDMDictionary.h"
#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMDictionary : public IZDMObjMgrImpl<IZDMDictionary> {
  ZDM_OBJECT(CZDMDictionary)
 public:
  CZDMDictionary();
};
