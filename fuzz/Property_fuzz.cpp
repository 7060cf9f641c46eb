// The record of a property.
#include "fuzz/PropertyDoor.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zdm::test::KnockOnProperty<CZProperty>({data, data + size});
  return 0;
}
