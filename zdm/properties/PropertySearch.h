// Properties by GUID, in a list and in groups within groups.
#pragma once

#include "platform/ole/ole.h"

struct IZProperty;
struct IZPropertyColl;
struct IZPropertyGroupColl;

namespace zdm {

/// The first one in list order (borrowed); null if none.
IZProperty* FindPropertyIn(IZPropertyColl* properties, const GUID& guid);
/// The first one, depth first: the properties of a group, then the groups below it, then the next
/// group. Groups may nest as deep as they like, and hold each other.
IZProperty* FindPropertyIn(IZPropertyGroupColl* groups, const GUID& guid);

}  // namespace zdm
