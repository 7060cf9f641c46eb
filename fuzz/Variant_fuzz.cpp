// Hostile bytes as a value in a stream: read, converted to every type, written back and read again.
#include <cstdint>
#include <cstdlib>

#include "platform/ole/Variant.h"
#include "platform/ole/VariantStream.h"
#include "tests/support/TestStream.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using zdm::Variant;
  zdm::test::TestStream stream({data, data + size});
  Variant value;
  if (FAILED(zdm::ReadVariant(&stream, value.Out()))) {
    Require(value.IsEmpty());
    return 0;
  }

  constexpr int kLastType = VT_UINT;
  for (int type = 0; type <= kLastType + 1; ++type) {
    Variant converted;
    const HRESULT result =
        zdm::ConvertVariant(converted.Out(), value.Get(), static_cast<VARTYPE>(type));
    Require(SUCCEEDED(result) ? converted.type() == type : converted.IsEmpty());
  }

  // What was read is written in one way: a second pass gives the same bytes.
  zdm::test::TestStream written;
  Require(zdm::WriteVariant(&written, value.Get()) == S_OK);
  written.position = 0;
  Variant again;
  Require(zdm::ReadVariant(&written, again.Out()) == S_OK);
  Require(again.type() == value.type());
  zdm::test::TestStream rewritten;
  Require(zdm::WriteVariant(&rewritten, again.Get()) == S_OK);
  Require(rewritten.bytes == written.bytes);
  return 0;
}
