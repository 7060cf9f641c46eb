// The parameters of an object, and its property sheet, in words.
#pragma once

#include "tools/zdm/Output.h"

struct IZDMObject;
struct IZParameter;
struct IZProperty;

namespace zdm::tool {

/// Definition, key, flags, type and value.
Json Described(IZParameter& parameter);
/// An array with one of these for each parameter, in the object's order.
Json Parameters(IZDMObject& object);
/// An array with the groups in the order of the sheet: name, and the properties with key, name,
/// value, and whether they are read-only and linked.
Json Sheet(IZDMObject& object);

/// What a property shows.
Json ValueOf(IZProperty& property);
/// The display name, or where there is none the name.
std::string LabelOf(IZProperty& property);

}  // namespace zdm::tool
