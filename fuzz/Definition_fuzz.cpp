// Hostile bytes as a definition: whatever was read can be copied, and the copy is the same.
#include "fuzz/OwnDataDoor.h"
#include "zdm/model/CZDefinition.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto definition = zdm::test::KnockOnOwnData<CZDefinition>({data, data + size});
  IZDMObject* object = definition.Get();
  const auto copy = zdm::CloneAs<IZDMObject>(object);
  if (!copy->JudgeSame(object)) std::abort();
  definition->AssertValid(nullptr);
  return 0;
}
