// Bytes as tests write them down and cut them, and what is written to a stream.
#pragma once

#include "tests/support/ByteStream.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace zdm::test {

using Bytes = std::vector<BYTE>;

/// Two hexadecimal digits a byte; blanks and colons are passed over.
inline Bytes Hex(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits),
                       [](char c) { return c != ' ' && c != ':'; });
  Bytes bytes;
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    bytes.push_back(static_cast<BYTE>(std::stoi(digits.substr(at, 2), nullptr, 16)));
  }
  return bytes;
}

/// The bytes that a number or an identifier has in memory.
template <class T>
Bytes Raw(const T& value) {
  const auto* bytes = reinterpret_cast<const BYTE*>(&value);
  return {bytes, bytes + sizeof(value)};
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

inline Bytes Join(std::initializer_list<Bytes> parts) {
  Bytes joined;
  for (const Bytes& part : parts) joined = joined + part;
  return joined;
}

/// The first `size` bytes.
inline Bytes Cut(const Bytes& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

/// The bytes that `save`, called with a stream, writes.
template <class Save>
Bytes Written(Save save) {
  ByteStream stream;
  save(&stream);
  return stream.GetBytes();
}

}  // namespace zdm::test
