#include "zdm/parameters/CZParameterColl.h"

ZDM_OBJECT_BODY(CZParameterColl)
