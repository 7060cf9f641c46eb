// The record of an object's extended data, loaded into a new manager and into one that holds a
// group already. What was read can be copied and written and reads back the same; a group stays
// until another takes its place.
#include "fuzz/Fuzz.h"
#include "tests/extdata/ExtDataSupport.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  MakeNote(nullptr, 0);  // a known class from here on
  constexpr GUID kHeld = {1, 0, 0, {}};
  const auto fresh = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  const auto held = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  held->QueryCollection(kHeld)->AddTail(MakeItem(OLESTR("held"), 1));
  const HRESULT result = Load(*fresh, bytes);
  Require(Load(*held, bytes) == result);
  Require(held->GetCollection(kHeld) != nullptr);

  const Bytes saved = Saved(*fresh);
  const auto again = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  Require(Load(*again, saved) == S_OK && Saved(*again) == saved);
  ZRefPtr<IZExtDataMgr> copy;
  again->Clone(copy.Out());
  Require(Saved(*copy) == saved);
}
