#include "zdm/parameters/PropertyGroups.h"

#include "platform/ole/Bstr.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"

#include <algorithm>

void zdm::BuildGroups(const std::vector<IZParameter*>& parameters, GroupOrder order,
                      IZPropertyGroupColl* groups) {
  if (parameters.empty() || groups == nullptr) return;
  IZDefinition* const first = parameters.front()->GetDefinition();
  IZDefinitionMgr* const definitions = first != nullptr ? first->GetDefinitionMgr() : nullptr;
  if (definitions == nullptr) return;

  std::vector<LONG> indexes;  // of each parameter
  std::vector<LONG> keys;     // each once
  for (IZParameter* parameter : parameters) {
    indexes.push_back(parameter->GetDefinitionIndex());
    if (std::ranges::find(keys, indexes.back()) == keys.end()) keys.push_back(indexes.back());
  }
  if (order == GroupOrder::kRegistration) definitions->SortKeysByRegistration(keys);

  for (const LONG key : keys) {
    Bstr name;
    definitions->GetNameByKey(key, name.Out());
    const auto group = NewOf<IZPropertyGroup, CZPropertyGroup>();
    group->SetName(name.Get());
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      if (indexes[i] == key) parameters[i]->AddPropertyTo(group->GetProperties());
    }
    groups->AddTail(group);
  }
}
