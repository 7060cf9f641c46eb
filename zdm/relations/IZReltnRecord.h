// A visitor that gathers the objects that a relation refers to, however deeply it nests others.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"

struct IZDMObjColl;

struct ZDM_INTERFACE IZReltnRecord : IZReltnVisitor {
  /// Appends to `out`, in the order of the walk and as often as it is met, the target of every
  /// single reference and reference record that `reltn` holds or reaches inside; paths are not
  /// followed. `out` stays the receiver of later walks; null records nothing.
  virtual void GetRecordObjects(IZRelation* reltn, IZDMObjColl* out) = 0;  // 12
};
