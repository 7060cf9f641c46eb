#include "drawing/CZDMDrawingSequence.h"

ZDM_OBJECT_BODY(CZDMDrawingSequence)
