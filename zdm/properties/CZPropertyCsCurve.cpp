#include "zdm/properties/CZPropertyCsCurve.h"

ZDM_OBJECT_BODY(CZPropertyCsCurve)
