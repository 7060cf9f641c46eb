// A serialization stream over bytes in memory: what tests save to and load from.
#pragma once

#include "platform/core/CZStream.h"
#include "tests/support/TestStream.h"

#include <utility>
#include <vector>

namespace zdm::test {

class ByteStream : public CZStream {
 public:
  explicit ByteStream(std::vector<BYTE> bytes = {}) : below(std::move(bytes)) {
    AttachStream(&below);
  }
  ~ByteStream() override { AttachStream(nullptr); }

  /// All bytes written so far.
  const std::vector<BYTE>& GetBytes() {
    GetIStream();
    return below.bytes;
  }

  TestStream below;
};

}  // namespace zdm::test
