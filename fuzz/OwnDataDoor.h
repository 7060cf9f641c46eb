// What the own data of an object must stand.
#pragma once

#include "tests/support/ByteStream.h"
#include "tests/support/Thrown.h"
#include "zdm/framework/ZRefPtr.h"

#include <cstdlib>
#include <vector>

namespace zdm::test {

template <class C>
bool LoadOwnData(C& object, const std::vector<BYTE>& bytes) {
  ByteStream stream(bytes);
  return Thrown([&] { object.LoadOwnData(&stream, nullptr); }) == S_OK;
}

template <class C>
std::vector<BYTE> OwnDataOf(C& object) {
  ByteStream stream;
  object.SaveOwnData(&stream, nullptr);
  return stream.GetBytes();
}

/// Whatever is read, also in part, can be written, reads back, and is written the same then. Loaded
/// into an object that has data already, the bytes are no more and no less damaged.
/// @return  the object that was loaded.
template <class C>
ZRefPtr<C> KnockOnOwnData(const std::vector<BYTE>& bytes) {
  const auto object = zdm::MakeObject<C, C>();
  const bool whole = LoadOwnData(*object, bytes);
  const std::vector<BYTE> saved = OwnDataOf(*object);
  const auto again = zdm::MakeObject<C, C>();
  if (!LoadOwnData(*again, saved) || OwnDataOf(*again) != saved) std::abort();
  if (LoadOwnData(*again, bytes) != whole) std::abort();
  return object;
}

}  // namespace zdm::test
