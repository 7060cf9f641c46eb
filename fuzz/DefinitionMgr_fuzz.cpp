// Hostile bytes as a manager of definitions: the keys read can be sorted, and each has its name.
#include "fuzz/OwnDataDoor.h"
#include "zdm/model/CZDefinitionMgr.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto manager = zdm::test::KnockOnOwnData<CZDefinitionMgr>({data, data + size});
  std::vector<LONG> keys = {7};
  for (const auto& [key, entry] : *manager->GetNameTable()) {
    if (entry->key != key) std::abort();
    keys.push_back(key);
  }
  manager->SortKeysByRegistration(keys);
  for (const LONG key : keys) {
    zdm::Bstr name;
    manager->GetNameByKey(key, name.Out());
  }
  return 0;
}
