// A visitor that makes a set of objects self-contained: relations that lead out of it by a path or
// a reference record lose ZRS_VALID. Plain targets are not looked at, references not rewritten.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"

struct IZDMObjColl;

struct ZDM_INTERFACE IZReltnSelfContained : IZReltnVisitor {
  /// Looks at the relations that are not diffusible, of the objects whose option mask has
  /// zdm::kReferencesCount. Status bit 15 marks the set meanwhile and is clear on its objects
  /// afterwards, whatever it was and however the call ends; an object outside that has the bit
  /// counts as one of the set.
  virtual void SelfContained(IZDMObjColl* objects) = 0;  // 12
};
