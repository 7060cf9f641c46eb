#include "drawing/CZDMDrawingSection.h"

ZDM_OBJECT_BODY(CZDMDrawingSection)
