// A data-model object with a name and no geometry: stands for anything that is only referred to,
// classified or given parameters.
#pragma once

#include "document/ClassTable.h"
#include "document/NamedObject.h"

class CZDMPlainObject : public NamedObject<IZDMObject> {
  ZDM_OBJECT(CZDMPlainObject)
};
