#include "document/CZPlainSingleReltn.h"

ZDM_OBJECT_BODY(CZPlainSingleReltn)
