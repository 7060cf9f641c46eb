// Collections of extended data as they stand in a stream, with items of a known class of the host's
// and of unknown ones. Whatever is read, also in part, can be copied and written, reads back the
// same, and is released whole.
#include "fuzz/Fuzz.h"
#include "tests/extdata/ExtDataSupport.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  MakeNote(nullptr, 0);  // a known class from here on
  const int before = Note::alive;
  {
    const auto items = MakeItems({});
    Load(*items, bytes);
    const Bytes saved = Saved(*items);
    const auto again = MakeItems({});
    ULONGLONG read = 0;
    Require(Load(*again, saved, &read) == S_OK && read == saved.size());
    Require(Saved(*again) == saved);
    ZRefPtr<IZExtDataCollection> copy;
    again->Clone(copy.Out());
    Require(Saved(*copy) == saved);
  }
  Require(Note::alive == before);
}
