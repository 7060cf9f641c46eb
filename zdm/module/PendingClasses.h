// The classes whose rows stand in ClassTable.def before their code does. Registration leaves their
// rows out; a class that arrives takes its line away here and adds its header to Registration.cpp.
#pragma once

#include "zdm/module/ClassTable.h"

namespace zdm {

template <class C>
inline constexpr bool kPending = false;

#define ZDM_PENDING(Class) \
  template <>              \
  inline constexpr bool kPending<Class> = true;
ZDM_PENDING(ZReltnVisitorMapID)
ZDM_PENDING(ZReltnVisitorMapIDForPaste)
#undef ZDM_PENDING

}  // namespace zdm
