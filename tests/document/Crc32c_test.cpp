// The checksum of records, and the bit that makes one fit.
#include "document/Crc32c.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// The instruction takes eight bytes at once, the table one; the value for nine digits is the known
// one of this polynomial.
TEST(Crc32c, IsTheSameInOnePieceAndByteByByte) {
  std::vector<BYTE> bytes = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
  EXPECT_EQ(zdm::Crc32c(bytes), 0xE3069283);
  for (int i = 0; i < 40; ++i) {
    ULONG pieces = 0;
    for (const BYTE& byte : bytes) pieces = zdm::Crc32c({&byte, 1}, pieces);
    EXPECT_EQ(zdm::Crc32c(bytes), pieces) << bytes.size();
    bytes.push_back(static_cast<BYTE>(37 * i));
  }
}

TEST(FlippedBit, IsFoundWhereverItIs) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    std::vector<BYTE> bytes(2 + random() % 400);
    for (BYTE& byte : bytes) byte = static_cast<BYTE>(random());
    const auto flip = [&](std::size_t bit) { bytes[bit / 8] ^= static_cast<BYTE>(1 << bit % 8); };
    const ULONG checksum = zdm::Crc32c(bytes);
    const std::size_t bit = random() % (8 * bytes.size());
    const std::size_t other = (bit + 9) % (8 * bytes.size());
    flip(bit);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum), bit);
    flip(other);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum), zdm::kNoBit);
    flip(other);
    flip(bit);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum ^ 0x100), 8 * bytes.size() + 8);
  }
}

}  // namespace
