// The record of an index property: a property's, then the entries.
#include "fuzz/PropertyDoor.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zdm::test::KnockOnProperty<CZPropertyIndex>({data, data + size});
  return 0;
}
