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

/// What was loaded, also in part, can be saved; where the bytes load again, they are saved again.
inline void RequireStableIfLoaded(IZRelation& loaded, IZRelation& again, TestDatabase& db) {
  const std::vector<BYTE> saved = BytesOf(loaded, &db);
  if (Loads([&] { LoadBytes(again, saved, &db); })) Require(BytesOf(again, &db) == saved);
}

/// Whatever own data is read, also in part, can be written, reads back, and is written the same
/// then. Loaded into an object that has data already, the bytes are no more and no less damaged.
/// @return  the object that was loaded.
template <class C>
ZRefPtr<C> KnockOnOwnData(const std::vector<BYTE>& bytes) {
  const auto loads = [](C& object, const std::vector<BYTE>& from) {
    ByteStream stream(from);
    return Loads([&] { object.LoadOwnData(&stream, nullptr); });
  };
  const auto saved = [](C& object) {
    ByteStream stream;
    object.SaveOwnData(&stream, nullptr);
    return stream.GetBytes();
  };
  const auto object = zdm::MakeObject<C, C>();
  const bool whole = loads(*object, bytes);
  const auto again = zdm::MakeObject<C, C>();
  Require(loads(*again, saved(*object)) && saved(*again) == saved(*object));
  Require(loads(*again, bytes) == whole);
  return object;
}

}  // namespace zdm::test
