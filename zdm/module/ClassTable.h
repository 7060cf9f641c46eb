// The rows of ClassTable.def as types (for ZDM_OBJECT) and as data (for listings and tests).
#pragma once

#include "zdm/framework/ZClass.h"

#include <span>

namespace zdm {

/// The module under which every class of the library is registered.
struct Module {
  static constexpr GUID kID = ParseGuid("7758971F-7467-4E3E-91A7-753A73940929");
  static constexpr const char* kName = "ZDM";
};

}  // namespace zdm

#define ZDM_CLASS(Class, classId, ...) \
  class Class;                         \
  ZDM_CLASS_ROW(zdm::Module, true, Class, classId, __VA_ARGS__)
#define ZDM_CLASS_NOT_CREATABLE(Class, ...) \
  class Class;                              \
  ZDM_CLASS_ROW(zdm::Module, false, Class, "00000000-0000-0000-0000-000000000000", __VA_ARGS__)
#include "zdm/module/ClassTable.def"

namespace zdm {

struct ClassInfo {
  const char* name;
  GUID classId;  // GUID_NULL when not creatable
  bool creatable;
  std::span<const char* const> interfaces;
};

/// The class table in its order (static data).
ZDM_API std::span<const ClassInfo> GetClassTable();

}  // namespace zdm
