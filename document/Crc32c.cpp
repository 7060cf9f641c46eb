#include "document/Crc32c.h"

#include <array>
#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <nmmintrin.h>
#endif

namespace zdm {

namespace {

constexpr ULONG kReflected = 0x82F63B78;

/// What a byte becomes.
constexpr std::array<ULONG, 256> kTable = [] {
  std::array<ULONG, 256> table = {};
  for (ULONG value = 0; value < table.size(); ++value) {
    ULONG crc = value;
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? kReflected : 0);
    table[value] = crc;
  }
  return table;
}();

ULONG ByTable(std::span<const BYTE> bytes, ULONG crc) {
  for (const BYTE byte : bytes) crc = (crc >> 8) ^ kTable[(crc ^ byte) & 0xFF];
  return crc;
}

#if defined(__x86_64__)

constexpr std::size_t kStep = 8;

const bool kHasInstruction = __builtin_cpu_supports("sse4.2");

/// The processor's own instruction, for as many whole steps as there are; takes them off `bytes`.
__attribute__((target("sse4.2"))) ULONG BySteps(std::span<const BYTE>& bytes, ULONG crc) {
  ULONGLONG wide = crc;
  for (; bytes.size() >= kStep; bytes = bytes.subspan(kStep)) {
    ULONGLONG step;
    std::memcpy(&step, bytes.data(), kStep);
    wide = _mm_crc32_u64(wide, step);
  }
  return static_cast<ULONG>(wide);
}

#endif

}  // namespace

ULONG Crc32c(std::span<const BYTE> bytes, ULONG before) {
  ULONG crc = ~before;
#if defined(__x86_64__)
  if (kHasInstruction) crc = BySteps(bytes, crc);
#endif
  return ~ByTable(bytes, crc);
}

// The difference that a bit makes does not depend on the other bytes, only on how many follow.
std::size_t FlippedBit(std::span<const BYTE> bytes, ULONG checksum) {
  const ULONG difference = Crc32c(bytes) ^ checksum;
  if (std::has_single_bit(difference)) {
    return 8 * bytes.size() + static_cast<std::size_t>(std::countr_zero(difference));
  }
  std::array<ULONG, 8> ofBit;
  for (std::size_t bit = 0; bit < ofBit.size(); ++bit) ofBit[bit] = kTable[std::size_t{1} << bit];
  for (std::size_t place = bytes.size(); place-- > 0;) {
    for (std::size_t bit = 0; bit < ofBit.size(); ++bit) {
      if (ofBit[bit] == difference) return 8 * place + bit;
      ofBit[bit] = (ofBit[bit] >> 8) ^ kTable[ofBit[bit] & 0xFF];
    }
  }
  return kNoBit;
}

}  // namespace zdm
