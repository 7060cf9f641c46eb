#include "drawing/CZDMDrawingDictionary.h"

ZDM_OBJECT_BODY(CZDMDrawingDictionary)
