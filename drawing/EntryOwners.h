// Which of the objects of a file stand below which dictionary.
#pragma once

#include "platform/ole/ole.h"

#include <functional>
#include <string_view>
#include <vector>

struct IZDMObject;

namespace zdm {

struct Entry {
  std::size_t index;      // of the object among all
  IZDMObject* owner;      // its dictionary (borrowed); null for none
  std::string_view name;  // its key there; of the dictionary's groups
};

/// All objects, each behind its owner. The first dictionary that has an object as an entry owns it;
/// what would own itself, and what would be more than 64 deep, has no owner.
/// @param find  the object of a handle, null for none.
std::vector<Entry> OwnersOfEntries(const std::vector<IZDMObject*>& objects,
                                   const std::function<IZDMObject*(std::string_view)>& find);

}  // namespace zdm
