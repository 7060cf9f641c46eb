// The plain relation to one object: what relation values, parameters and categories refer with.
#pragma once

#include "document/ClassTable.h"
#include "zdm/relations/IZSingleReltnImpl.h"

class CZPlainSingleReltn : public IZSingleReltnImpl<IZSingleReltn> {
  ZDM_OBJECT(CZPlainSingleReltn)
};
