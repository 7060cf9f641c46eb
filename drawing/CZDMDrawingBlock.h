// A block of a drawing: the entities that every insert of it shows.
#pragma once

#include "drawing/DrawingObject.h"

class CZDMDrawingBlock : public DrawingObject<IZDMObjMgrImpl<IZDMObjMgr>> {
  ZDM_OBJECT(CZDMDrawingBlock)
};
