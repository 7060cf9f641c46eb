#include "zdm/parameters/CZParameterArray.h"

ZDM_OBJECT_BODY(CZParameterArray)
