#include "document/CZDMPlainObject.h"

ZDM_OBJECT_BODY(CZDMPlainObject)
