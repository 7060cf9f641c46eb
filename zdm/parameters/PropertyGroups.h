// The groups of a property sheet, built from the definitions of parameters.
#pragma once

#include <vector>

struct IZParameter;
struct IZPropertyGroupColl;

namespace zdm {

enum class GroupOrder {
  kRegistration,    ///< that in which the names of the indexes were registered
  kFirstAppearance  ///< that in which the indexes first occur among the parameters
};

/// Appends to `groups` a group for each definition index of `parameters`, with a copy of the
/// definition's property for each parameter of that index. The names are those of the manager of
/// the first parameter's definition; without that manager nothing is appended.
void BuildGroups(const std::vector<IZParameter*>& parameters, GroupOrder order,
                 IZPropertyGroupColl* groups);

}  // namespace zdm
