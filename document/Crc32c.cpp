#include "document/Crc32c.h"

#include <array>
#include <bit>
#include <cstring>

namespace zdm {

namespace {

constexpr ULONG kReflected = 0x82F63B78;
constexpr std::size_t kStep = 8;  // bytes per turn; one table for each

using Tables = std::array<std::array<ULONG, 256>, kStep>;

constexpr Tables MakeTables() {
  Tables tables = {};
  for (ULONG value = 0; value < 256; ++value) {
    ULONG crc = value;
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? kReflected : 0);
    tables[0][value] = crc;
  }
  for (std::size_t i = 1; i < kStep; ++i) {
    for (std::size_t value = 0; value < 256; ++value) {
      const ULONG crc = tables[i - 1][value];
      tables[i][value] = (crc >> 8) ^ tables[0][crc & 0xFF];
    }
  }
  return tables;
}

constexpr Tables kTables = MakeTables();

}  // namespace

ULONG Crc32c(std::span<const BYTE> bytes, ULONG before) {
  ULONG crc = ~before;
  while (bytes.size() >= kStep) {
    ULONG low;
    ULONG high;
    std::memcpy(&low, bytes.data(), 4);
    std::memcpy(&high, bytes.data() + 4, 4);
    low ^= crc;
    crc = kTables[7][low & 0xFF] ^ kTables[6][(low >> 8) & 0xFF] ^ kTables[5][(low >> 16) & 0xFF] ^
          kTables[4][low >> 24] ^ kTables[3][high & 0xFF] ^ kTables[2][(high >> 8) & 0xFF] ^
          kTables[1][(high >> 16) & 0xFF] ^ kTables[0][high >> 24];
    bytes = bytes.subspan(kStep);
  }
  for (const BYTE byte : bytes) crc = (crc >> 8) ^ kTables[0][(crc ^ byte) & 0xFF];
  return ~crc;
}

// The difference that a bit makes does not depend on the other bytes, only on how many follow.
std::size_t FlippedBit(std::span<const BYTE> bytes, ULONG checksum) {
  const ULONG difference = Crc32c(bytes) ^ checksum;
  if (std::has_single_bit(difference)) {
    return 8 * bytes.size() + static_cast<std::size_t>(std::countr_zero(difference));
  }
  std::array<ULONG, 8> ofBit;
  for (std::size_t bit = 0; bit < ofBit.size(); ++bit)
    ofBit[bit] = kTables[0][std::size_t{1} << bit];
  for (std::size_t place = bytes.size(); place-- > 0;) {
    for (std::size_t bit = 0; bit < ofBit.size(); ++bit) {
      if (ofBit[bit] == difference) return 8 * place + bit;
      ofBit[bit] = (ofBit[bit] >> 8) ^ kTables[0][ofBit[bit] & 0xFF];
    }
  }
  return kNoBit;
}

}  // namespace zdm
