// An entity that records of its own follow: a polyline with its vertices.
#pragma once

#include "drawing/DrawingObject.h"

class CZDMDrawingSequence : public DrawingObject<IZDMObjMgrImpl<IZDMObjMgr>> {
  ZDM_OBJECT(CZDMDrawingSequence)
};
