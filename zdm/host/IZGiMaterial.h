// A material of the host: a data-model object, found by name in the document's material manager.
// Objects refer to one through a relation parameter, categories through a relation.
#pragma once

#include "zdm/model/IZDMObject.h"

struct ZDM_INTERFACE IZGiMaterial : IZDMObject {
  /// True when objects of this material show that of their category in its place.
  virtual bool IsByCategory() = 0;  // 130
};
