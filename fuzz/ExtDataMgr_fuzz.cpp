// The record of an object's extended data, loaded into a new manager and into one that holds a
// group already. What was read can be copied and written and reads back the same; a group stays
// until another takes its place.
#include "tests/extdata/ExtDataSupport.h"

#include <cstdint>
#include <cstdlib>

using namespace zdm::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MakeNote(nullptr, 0);  // a known class from here on
  const Bytes bytes(data, data + size);
  constexpr GUID kHeld = {1, 0, 0, {}};
  const auto fresh = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  const auto held = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  held->QueryCollection(kHeld)->AddTail(MakeItem(OLESTR("held"), 1));
  const HRESULT result = Load(*fresh, bytes);
  if (Load(*held, bytes) != result) std::abort();
  if (held->GetCollection(kHeld) == nullptr) std::abort();

  const Bytes saved = Saved(*fresh);
  const auto again = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  if (Load(*again, saved) != S_OK || Saved(*again) != saved) std::abort();
  ZRefPtr<IZExtDataMgr> copy;
  again->Clone(copy.Out());
  if (Saved(*copy) != saved) std::abort();
  return 0;
}
