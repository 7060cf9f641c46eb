// What the fuzz targets share: the door the engine knocks on, and what stops a run.
#pragma once

#include "platform/ole/CAtlException.h"
#include "tests/support/ByteStream.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace zdm::test {

/// Stops the run where a promise is broken.
inline void Require(bool kept, const char* promise = "a promise") {
  if (kept) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
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

/// The bytes that Save writes to a stream; what it takes besides follows.
template <class T, class... More>
std::vector<BYTE> SavedBytes(T& object, More... more) {
  ByteStream stream;
  object.Save(&stream, more...);
  return stream.GetBytes();
}

/// False when Load finds damage.
template <class T, class... More>
bool LoadsBytes(T& object, const std::vector<BYTE>& bytes, More... more) {
  ByteStream stream(bytes);
  return Loads([&] { object.Load(&stream, more...); });
}

}  // namespace zdm::test

// NOLINTBEGIN(bugprone-macro-parentheses): bytes is a name.

/// ZDM_FUZZ(bytes) { what is done with them }
#define ZDM_FUZZ(bytes)                                                               \
  static void Fuzz(const std::vector<BYTE>& bytes);                                   \
  extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
    Fuzz({data, data + size});                                                        \
    return 0;                                                                         \
  }                                                                                   \
  static void Fuzz(const std::vector<BYTE>& bytes)

// NOLINTEND(bugprone-macro-parentheses)
