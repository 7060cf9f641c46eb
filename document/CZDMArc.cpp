#include "document/CZDMArc.h"

ZDM_OBJECT_BODY(CZDMArc)
