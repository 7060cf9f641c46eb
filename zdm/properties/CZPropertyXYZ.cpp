#include "zdm/properties/CZPropertyXYZ.h"

ZDM_OBJECT_BODY(CZPropertyXYZ)
