// What the fuzz targets share: the door the engine knocks on, and what stops a run.
#pragma once

#include "platform/ole/CAtlException.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace zdm::test {

/// Stops the run where a promise is broken.
inline void Require(bool kept) {
  if (!kept) std::abort();
}

/// False when `load` finds damage.
template <class Load>
bool Loads(Load load) {
  try {
    load();
    return true;
  } catch (const CAtlException&) {
    return false;
  }
}

}  // namespace zdm::test

/// ZDM_FUZZ(bytes) { what is done with them }
#define ZDM_FUZZ(bytes)                                                               \
  static void Fuzz(const std::vector<BYTE>& bytes);                                   \
  extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
    Fuzz({data, data + size});                                                        \
    return 0;                                                                         \
  }                                                                                   \
  static void Fuzz(const std::vector<BYTE>& bytes)
