// Definitions of parameters, and the names that their managers have for the groups, in words.
#pragma once

#include "tools/zdm/Output.h"

struct IZDefinition;
struct IZDefinitionMgr;

namespace zdm::tool {

/// Key, name, type code, group (null where it has no name), index, kind, flags, the value that the
/// property has, and the extra data where there are any.
Json Described(IZDefinition& definition);
/// An array with index and name of each group, in the order in which they were registered.
Json Groups(IZDefinitionMgr& manager);

}  // namespace zdm::tool
