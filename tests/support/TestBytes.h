// Bytes as tests write them down and damage them.
#pragma once

#include "platform/ole/ole.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace zdm::test {

using Bytes = std::vector<BYTE>;

/// Of hexadecimal text in capitals; blanks part what belongs apart.
inline Bytes Hex(std::string_view text) {
  Bytes bytes;
  bool isLower = false;
  for (const char c : text) {
    if (c == ' ') continue;
    if (!isLower) bytes.push_back(0);
    bytes.back() = static_cast<BYTE>(bytes.back() * 16 + (c <= '9' ? c - '0' : c - 'A' + 10));
    isLower = !isLower;
  }
  return bytes;
}

/// The bytes that a number or an identifier has in memory.
template <class T>
Bytes Raw(const T& value) {
  const auto* bytes = reinterpret_cast<const BYTE*>(&value);
  return {bytes, bytes + sizeof(value)};
}

inline Bytes Join(std::initializer_list<Bytes> parts) {
  Bytes joined;
  for (const Bytes& part : parts) joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

/// The first `size` bytes.
inline Bytes Cut(const Bytes& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace zdm::test
