#include "zdm/properties/CZPropertyYesNo.h"

ZDM_OBJECT_BODY(CZPropertyYesNo)
