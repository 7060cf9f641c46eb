// A visitor that answers whether an object refers to a given object directly: the walk of
// VisitReferences ends with true when it does.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"
#include "zdm/relations/eZRelation.h"

struct ZDM_INTERFACE IZReltnIsDirectTo : IZReltnVisitor {
  /// @param selector  the relations to look through, by the loose test (zdm::SelectsLoosely).
  /// @param target    the object looked for.
  virtual void Initialize(eZRelation selector, IZDMObject* target) = 0;  // 12
};
