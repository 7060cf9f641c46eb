// A visitor that sets or clears status bits on the relations an object offers: its valid relations
// and those in its parameters. What these hold inside is not touched.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"
#include "zdm/relations/eZRelation.h"

struct IZDMObjColl;

struct ZDM_INTERFACE IZReltnStatus : IZReltnVisitor {
  /// @param selector  the relations to change, by the strict test (zdm::SelectsStrictly).
  /// @param bits      the bits to change (ZRS_…).
  /// @param set       false: they are cleared.
  virtual void Initialize(eZRelation selector, LONG bits, bool set) = 0;  // 12
  /// Sets or clears ZRS_ISOLATED on the selected relations of `object`, or of every object of
  /// `objects`. The visitor stays so initialized.
  virtual void Isolate(IZDMObject* object, eZRelation selector, bool set) = 0;    // 13
  virtual void Isolate(IZDMObjColl* objects, eZRelation selector, bool set) = 0;  // 14
};
