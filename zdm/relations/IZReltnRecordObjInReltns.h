// A visitor that records the relations through which a given object is reached.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"
#include "zdm/relations/eZRelation.h"

struct ZDM_INTERFACE IZReltnRecordObjInReltns : IZReltnVisitor {
  /// @param selector  the relations to look through, by the loose test (zdm::SelectsLoosely).
  /// @param target    the object looked for.
  /// @param out       receives the relations; null: the recording collection itself does.
  virtual void Initialize(eZRelation selector, IZDMObject* target, IZReltnColl* out) = 0;  // 12
};
