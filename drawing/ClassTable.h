// The rows of ClassTable.def as types (for ZDM_OBJECT), and the registration of the classes.
#pragma once

#include "zdm/framework/ZClass.h"

namespace zdm {

/// The module under which the classes of drawing objects are registered.
struct DrawingModule {
  static constexpr GUID kID = ParseGuid("926C6430-238B-4F59-8902-4CD2F8C862ED");
  static constexpr const char* kName = "DRAWING";
};

/// Registers the classes with the factory; before a document with a drawing is opened. A second
/// call changes nothing.
void RegisterDrawingClasses();

}  // namespace zdm

#define ZDM_DRAWING_CLASS(Class, classId, ...) \
  class Class;                                 \
  ZDM_CLASS_ROW(zdm::DrawingModule, true, Class, classId, __VA_ARGS__)
#include "drawing/ClassTable.def"
