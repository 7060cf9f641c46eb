// Names of parts of objects, as they stand in a stream: what loads is saved to the bytes it came
// from.
#include "fuzz/Fuzz.h"
#include "platform/geometry/SubID.h"
#include "tests/support/ByteStream.h"

#include <memory>

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  ByteStream in(bytes);
  SubID* loaded = nullptr;
  if (!Loads([&] { LoadSubID(&in, &loaded); })) {
    Require(loaded == nullptr);
    return;
  }
  const std::unique_ptr<SubID> id(loaded);
  ByteStream out;
  SaveSubID(&out, id.get());
  const auto used = static_cast<std::ptrdiff_t>(in.GetPosition());
  Require(out.GetBytes() == std::vector<BYTE>(bytes.begin(), bytes.begin() + used));
}
