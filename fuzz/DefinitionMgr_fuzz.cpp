// Hostile bytes as a manager of definitions: the keys read can be sorted, and each has its name.
#include "fuzz/ObjectFuzz.h"
#include "zdm/model/CZDefinitionMgr.h"

ZDM_FUZZ(bytes) {
  const auto manager = zdm::test::KnockOnOwnData<CZDefinitionMgr>(bytes);
  std::vector<LONG> keys = {7};
  for (const auto& [key, entry] : *manager->GetNameTable()) {
    zdm::test::Require(entry->key == key);
    keys.push_back(key);
  }
  manager->SortKeysByRegistration(keys);
  for (const LONG key : keys) {
    zdm::Bstr name;
    manager->GetNameByKey(key, name.Out());
  }
}
