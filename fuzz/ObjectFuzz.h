// What the fuzz targets of records of objects share.
#pragma once

#include "fuzz/Fuzz.h"
#include "tests/support/TestDatabase.h"

namespace zdm::test {

/// An object among the relations writes nothing behind its class identifier unless it is valid, so
/// that what follows cannot be read back.
inline bool HoldsObjects(IZReltnColl* relations) {
  if (relations == nullptr) return false;
  for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
    if (ViewAs<IZDMObject>(relations->GetNext(pos)) != nullptr) return true;
  }
  return false;
}

/// `again` takes the record of `object`, which is then saved as it came; unless objects are among
/// the relations.
inline void RequireStable(IZDMObject& object, IZDMObject& again, TestDatabase& db) {
  const std::vector<BYTE> saved = BytesOf(object, &db);
  if (HoldsObjects(object.GetReltnColl())) return;
  Require(Loads([&] { LoadBytes(again, saved, &db); }));
  again.SetID(object.GetID());
  Require(BytesOf(again, &db) == saved);
}

}  // namespace zdm::test
