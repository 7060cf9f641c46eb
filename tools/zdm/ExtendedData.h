// The extended data of an object in words.
#pragma once

#include "tools/zdm/Output.h"

struct IZDMObject;

namespace zdm::tool {

/// An array with key, name, type and value of each item; those of nested collections are below
/// theirs as `items`. Of an item of another class: the class, length and checksum of its data.
Json ExtendedData(IZDMObject& object);

}  // namespace zdm::tool
