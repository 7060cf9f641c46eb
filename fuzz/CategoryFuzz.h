// What the fuzz targets of categories share.
#pragma once

#include "platform/ole/CAtlException.h"
#include "tests/categories/CategorySupport.h"

#include <cstdint>
#include <cstdlib>

namespace zdm::test {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

/// False when `call` throws.
template <class Call>
bool Succeeds(Call call) {
  try {
    call();
    return true;
  } catch (const CAtlException&) {
    return false;
  }
}

/// What was loaded, also in part, can be saved; where the bytes load again, they are saved again.
inline void RequireStable(IZRelation& loaded, IZRelation& again, TestDatabase& db) {
  const std::vector<BYTE> saved = BytesOf(loaded, &db);
  if (Succeeds([&] { LoadBytes(again, saved, &db); })) Require(BytesOf(again, &db) == saved);
}

}  // namespace zdm::test
