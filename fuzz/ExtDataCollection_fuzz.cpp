// Collections of extended data as they stand in a stream, with items of a known class of the host's
// and of unknown ones. Whatever is read, also in part, can be copied and written, reads back the
// same, and is released whole.
#include "tests/extdata/ExtDataSupport.h"

#include <cstdint>
#include <cstdlib>

using namespace zdm::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MakeNote(nullptr, 0);  // a known class from here on
  const int before = Note::alive;
  {
    const auto items = MakeItems({});
    Load(*items, Bytes(data, data + size));
    const Bytes saved = Saved(*items);
    const auto again = MakeItems({});
    ULONGLONG read = 0;
    if (Load(*again, saved, &read) != S_OK || read != saved.size()) std::abort();
    if (Saved(*again) != saved) std::abort();
    ZRefPtr<IZExtDataCollection> copy;
    again->Clone(copy.Out());
    if (Saved(*copy) != saved) std::abort();
  }
  if (Note::alive != before) std::abort();
  return 0;
}
