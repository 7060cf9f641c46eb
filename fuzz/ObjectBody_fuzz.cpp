// Hostile bytes as an object's record: loaded into a new object and into one that holds something
// already. What loads is saved to bytes that load to the same bytes again; what does not load
// leaves both objects usable, and the second one with its name.
#include "platform/ole/CAtlException.h"
#include "tests/support/TestDatabase.h"

#include <cstdint>
#include <cstdlib>

namespace {

using zdm::test::BytesOf;
using zdm::test::LoadBytes;
using zdm::test::TestDatabase;

void Require(bool holds) {
  if (!holds) std::abort();
}

bool Loads(IZDMObject& object, const std::vector<BYTE>& bytes, TestDatabase& db) {
  try {
    LoadBytes(object, bytes, &db);
    return true;
  } catch (const CAtlException&) {
    return false;
  }
}

zdm::Bstr NameOf(IZDMObject& object) {
  zdm::Bstr name;
  object.GetName(name.Out());
  return name;
}

/// An object among the relations: as it is not valid, it writes nothing behind its class
/// identifier, and what follows cannot be read back.
bool HoldsObjects(IZReltnColl* relations) {
  if (relations == nullptr) return false;
  for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
    IZRelation* relation = relations->GetNext(pos);
    if (relation != nullptr && zdm::ViewAs<IZDMObject>(relation) != nullptr) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<BYTE> bytes(data, data + size);
  TestDatabase db;
  auto target = db.MakeObject();
  auto fresh = db.MakeObject();
  auto held = db.MakeObject(OLESTR("held"));
  held->AddRelation(zdm::test::RelationTo(target));

  const bool loads = Loads(*fresh, bytes, db);
  Require(Loads(*held, bytes, db) == loads);
  if (!loads) {
    Require(NameOf(*held) == zdm::Bstr(OLESTR("held")));
    Require(held->GetReltnColl() != nullptr);
  }

  // Also what an object kept of a damaged record can be saved, cloned and loaded.
  const std::vector<BYTE> saved = BytesOf(*fresh, &db);
  const auto clone = zdm::CloneAs<IZDMObject>(fresh.Get());
  Require(clone != nullptr);
  if (HoldsObjects(fresh->GetReltnColl())) return 0;
  auto again = db.MakeObject();
  Require(Loads(*again, saved, db));
  again->SetID(fresh->GetID());
  Require(BytesOf(*again, &db) == saved);
  return 0;
}
