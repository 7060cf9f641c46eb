// A visitor that spreads a status bit of objects along diffusible relations: from the object that
// is asked with VisitReferences to every object that it reaches through valid diffusible relations
// and, if wanted, to the owners of all these and what they reach. An object that has the bit is not
// entered. The caller clears the bit when it is no longer needed.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"

struct ZDM_INTERFACE IZReltnDiffuse : IZReltnVisitor {
  /// @param status  bit of the objects' status, 0 to 63; ZOS_DIFFUSEMARK at first.
  /// @param upward  whether owners are reached too; true at first.
  virtual void Initialize(LONG status, bool upward) = 0;  // 12
  virtual void get_Status(LONG* out) = 0;                 // 13
};
