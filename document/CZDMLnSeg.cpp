#include "document/CZDMLnSeg.h"

ZDM_OBJECT_BODY(CZDMLnSeg)
