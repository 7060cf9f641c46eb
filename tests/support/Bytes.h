// Bytes as tests write them down and cut them, and what is written to a stream.
#pragma once

#include "tests/support/ByteStream.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>

namespace zdm::test {

using Bytes = std::vector<BYTE>;

/// Two hexadecimal digits a byte; blanks and colons between them are passed over.
inline Bytes Hex(const char* digits) {
  Bytes bytes;
  for (; *digits != 0; ++digits) {
    if (*digits == ' ' || *digits == ':') continue;
    bytes.push_back(static_cast<BYTE>(std::stoi(std::string(digits, 2), nullptr, 16)));
    ++digits;
  }
  return bytes;
}

/// 32-bit numbers as they stand in a stream.
inline Bytes Words(std::initializer_list<LONG> words) {
  Bytes bytes(words.size() * sizeof(LONG));
  if (!bytes.empty()) std::memcpy(bytes.data(), std::data(words), bytes.size());
  return bytes;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// The first `size` bytes.
inline Bytes First(const Bytes& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

/// The bytes that `save`, called with a stream, writes.
template <class Save>
Bytes Written(Save save) {
  ByteStream stream;
  save(&stream);
  return stream.GetBytes();
}

/// Loads every part of `bytes` that ends early: `load` must throw E_FAIL.
template <class Load>
void ExpectShortStreamsThrow(const Bytes& bytes, Load load) {
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    ByteStream stream(First(bytes, size));
    EXPECT_EQ(Thrown([&] { load(&stream); }), E_FAIL) << "from " << size << " bytes";
  }
}

}  // namespace zdm::test
