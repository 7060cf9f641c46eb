#include "drawing/CZDMDrawingBlock.h"

ZDM_OBJECT_BODY(CZDMDrawingBlock)
