// Relation collections, as they stand in a stream. Whatever is read, also in part, can be written,
// reads back the same, and is released whole.
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace zdm::test;

namespace {

/// An object is written only while it is valid itself, so a collection that holds one need not read
/// back what it writes.
bool HoldsObject(IZReltnColl& coll) {
  for (LONGLONG pos = coll.GetHeadPosition(); pos != 0;) {
    if (zdm::ViewAs<IZDMObject>(coll.GetNext(pos)) != nullptr) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  OID listed[] = {{0, 0, 1, nullptr}, {0, 0, -2, nullptr}};
  Lookup database;
  for (OID& oid : listed) database.records[oid.ID] = &oid;
  const int before = PlainReltn::alive;
  {
    const auto coll = MakeReltns("");
    ByteStream in(std::vector<BYTE>(data, data + size));
    try {
      coll->Load(&in, &database);
    } catch (const CAtlException&) {
    }
    ByteStream out;
    coll->Save(&out, &database);
    if (!HoldsObject(*coll)) {
      const std::vector<BYTE> bytes = out.GetBytes();
      out.Seek(0, STREAM_SEEK_SET);
      const auto again = MakeReltns("");
      again->Load(&out, &database);
      if (Saved(*again) != bytes) std::abort();
    }
    Recorder visitor;
    visitor.descends = true;
    if (coll->Accept(nullptr, nullptr, &visitor)) std::abort();
  }
  if (PlainReltn::alive != before) std::abort();
  return 0;
}
