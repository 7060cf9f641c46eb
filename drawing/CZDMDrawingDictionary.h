// A dictionary of a drawing with the objects that are its entries. An entry that cannot be below
// it, since it is below another one already, is referred to only.
#pragma once

#include "drawing/DrawingObject.h"
#include "zdm/model/IZDMDictionary.h"

class CZDMDrawingDictionary : public DrawingObject<IZDMObjMgrImpl<IZDMDictionary>> {
  ZDM_OBJECT(CZDMDrawingDictionary)
};
