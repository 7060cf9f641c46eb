// The rows of ClassTable.def as types (for ZDM_OBJECT), and the registration of the classes.
#pragma once

#include "zdm/framework/ZClass.h"

namespace zdm {

/// The module under which the document's classes are registered.
struct DocumentModule {
  static constexpr GUID kID = ParseGuid("21117F47-3B94-4C18-AD09-12097DD280F8");
  static constexpr const char* kName = "DOCUMENT";
};

/// Registers the document's classes with the factory, in the order of the table; before anything is
/// loaded. A second call changes nothing.
void RegisterDocumentClasses();

}  // namespace zdm

#define ZDM_DOCUMENT_CLASS(Class, classId, ...) \
  class Class;                                  \
  ZDM_CLASS_ROW(zdm::DocumentModule, true, Class, classId, __VA_ARGS__)
#include "document/ClassTable.def"
