// A section of a drawing, or one of its tables: the records between its beginning and its end.
#pragma once

#include "drawing/DrawingObject.h"

class CZDMDrawingSection : public DrawingObject<IZDMObjMgrImpl<IZDMObjMgr>> {
  ZDM_OBJECT(CZDMDrawingSection)
};
