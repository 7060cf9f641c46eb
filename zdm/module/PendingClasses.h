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
ZDM_PENDING(CZDefinition)
ZDM_PENDING(CZDefinitionMgr)
ZDM_PENDING(CZDMParameter)
ZDM_PENDING(CZDMParameterMgr)
ZDM_PENDING(CZParameter)
ZDM_PENDING(CZParameterArray)
ZDM_PENDING(CZParameterColl)
#undef ZDM_PENDING

}  // namespace zdm
