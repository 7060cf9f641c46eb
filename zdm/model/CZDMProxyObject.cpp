#include "zdm/model/CZDMProxyObject.h"

ZDM_OBJECT_BODY(CZDMProxyObject)
