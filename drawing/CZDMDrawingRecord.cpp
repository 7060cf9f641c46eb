#include "drawing/CZDMDrawingRecord.h"

ZDM_OBJECT_BODY(CZDMDrawingRecord)
