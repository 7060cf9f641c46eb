// Names of parts of objects, as they stand in a stream: what loads is saved to the bytes it came
// from.
#include "platform/geometry/SubID.h"
#include "platform/ole/CAtlException.h"
#include "tests/support/ByteStream.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zdm::test::ByteStream in(std::vector<BYTE>(data, data + size));
  SubID* loaded = nullptr;
  try {
    LoadSubID(&in, &loaded);
  } catch (const CAtlException&) {
    if (loaded != nullptr) std::abort();
    return 0;
  }
  const std::unique_ptr<SubID> id(loaded);
  zdm::test::ByteStream out;
  SaveSubID(&out, id.get());
  const std::vector<BYTE> used(data, data + in.GetPosition());
  if (out.GetBytes() != used) std::abort();
  return 0;
}
