// Records that end too early.
#pragma once

#include "tests/support/Bytes.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

namespace zdm::test {

/// `load` throws E_FAIL for every piece of `bytes` that is shorter, from the length `from` on.
template <class Load>
void ExpectCutsFail(const Bytes& bytes, Load load, std::size_t from = 0) {
  for (std::size_t size = from; size < bytes.size(); ++size) {
    EXPECT_EQ(Thrown([&] { load(Cut(bytes, size)); }), E_FAIL) << "cut at " << size;
  }
}

/// The same of what loads from a stream.
template <class Load>
void ExpectShortStreamsThrow(const Bytes& bytes, Load load) {
  ExpectCutsFail(bytes, [&](const Bytes& cut) {
    ByteStream stream(cut);
    load(&stream);
  });
}

}  // namespace zdm::test
