// Relation collections, as they stand in a stream. Whatever is read, also in part, can be written,
// reads back the same, and is released whole.
#include "fuzz/ObjectFuzz.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  OID listed[] = {{0, 0, 1, nullptr}, {0, 0, -2, nullptr}};
  Lookup database;
  for (OID& oid : listed) database.records[oid.ID] = &oid;
  const int before = PlainReltn::alive;
  {
    const auto coll = MakeReltns("");
    LoadsBytes(*coll, bytes, &database);
    const std::vector<BYTE> saved = SavedBytes(*coll, &database);
    if (!HoldsObjects(coll)) {
      const auto again = MakeReltns("");
      Require(LoadsBytes(*again, saved, &database) && Saved(*again) == saved);
    }
    Recorder visitor;
    visitor.descends = true;
    Require(!coll->Accept(nullptr, nullptr, &visitor));
  }
  Require(PlainReltn::alive == before);
}
