// Hostile bytes as an object's record: loaded into a new object and into one that holds something
// already. What loads is saved to bytes that load to the same bytes again; what does not load
// leaves both objects usable, and the second one with its name.
#include "fuzz/ObjectFuzz.h"

namespace {

using namespace zdm::test;

zdm::Bstr NameOf(IZDMObject& object) {
  zdm::Bstr name;
  object.GetName(name.Out());
  return name;
}

}  // namespace

ZDM_FUZZ(bytes) {
  TestDatabase db;
  auto target = db.MakeObject();
  auto fresh = db.MakeObject();
  auto held = db.MakeObject(OLESTR("held"));
  held->AddRelation(RelationTo(target));

  const bool loads = Loads([&] { LoadBytes(*fresh, bytes, &db); });
  Require(Loads([&] { LoadBytes(*held, bytes, &db); }) == loads);
  if (!loads) {
    Require(NameOf(*held) == zdm::Bstr(OLESTR("held")));
    Require(held->GetReltnColl() != nullptr);
  }

  // Also what an object kept of a damaged record can be saved, cloned and loaded.
  Require(zdm::CloneAs<IZDMObject>(fresh.Get()) != nullptr);
  RequireStable(*fresh, *db.MakeObject(), db);
}
