#include "zdm/properties/PropertySearch.h"

#include "zdm/properties/IZProperty.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"

#include <unordered_set>
#include <vector>

namespace zdm {

IZProperty* FindPropertyIn(IZPropertyColl* properties, const GUID& guid) {
  for (LONGLONG pos = properties->GetHeadPosition(); pos != 0;) {
    IZProperty* property = properties->GetNext(pos);
    if (property != nullptr && property->HasGUID(guid)) return property;
  }
  return nullptr;
}

IZProperty* FindPropertyIn(IZPropertyGroupColl* groups, const GUID& guid) {
  struct Level {
    IZPropertyGroupColl* groups;
    LONGLONG next;
  };
  std::vector<Level> levels = {{groups, groups->GetHeadPosition()}};
  std::unordered_set<IZPropertyGroupColl*> entered;  // searched, or being searched: once is enough
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZPropertyGroup* group = level.groups->GetNext(level.next);
    if (group == nullptr) continue;
    if (IZProperty* found = FindPropertyIn(group->GetProperties(), guid)) return found;
    IZPropertyGroupColl* below = group->GetGroups();
    if (!below->IsEmpty() && entered.insert(below).second) {
      levels.push_back({below, below->GetHeadPosition()});
    }
  }
  return nullptr;
}

}  // namespace zdm
