// What the framework knows of an interface at compile time: its name and its 16-bit id.
// The ids of the library's own interface names are registered when the library is loaded; a host
// declares its interfaces with ZDM_DECLARE_INTERFACE.
#pragma once

#include "platform/core/CZObject.h"

#include <type_traits>

#define ZDM_INTERFACE_NAME(name) struct name;
#include "zdm/framework/InterfaceNames.def"

namespace zdm {

enum InterfaceIndex : unsigned {
#define ZDM_INTERFACE_NAME(name) kIndex_##name,
#include "zdm/framework/InterfaceNames.def"
  kInterfaceNameCount
};

/// Ids of the names in InterfaceNames.def, by place; filled while the library is loaded.
extern ZDM_API unsigned short interfaceIDs[kInterfaceNameCount];

}  // namespace zdm

/// `ZInterface<I>::kName` is the name and `ZInterface<I>::ID()` the id of the interface type I.
template <class I>
struct ZInterface {
  static_assert(
      !std::is_same_v<I, I>,
      "the interface has no id: ZDM_DECLARE_INTERFACE(I) at global scope, before its use");
};

#define ZDM_INTERFACE_NAME(name)                                                 \
  template <>                                                                    \
  struct ZInterface<name> {                                                      \
    static constexpr const char* kName = #name;                                  \
    static unsigned short ID() { return zdm::interfaceIDs[zdm::kIndex_##name]; } \
  };
#include "zdm/framework/InterfaceNames.def"

/// At global scope, for an interface that is not in InterfaceNames.def.
#define ZDM_DECLARE_INTERFACE(name)                                   \
  template <>                                                         \
  struct ZInterface<name> {                                           \
    static constexpr const char* kName = #name;                       \
    static unsigned short ID() {                                      \
      static const unsigned short id = CZObject::AddInterface(#name); \
      return id;                                                      \
    }                                                                 \
  };
