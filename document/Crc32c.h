// CRC-32C (polynomial 0x1EDC6F41, reflected; as in RFC 3720), the checksum of the stored records.
#pragma once

#include "platform/ole/ole.h"

#include <cstddef>
#include <span>

namespace zdm {

/// @param before  the checksum of what stands before `bytes`, to go on from.
ULONG Crc32c(std::span<const BYTE> bytes, ULONG before = 0);

constexpr std::size_t kNoBit = ~std::size_t{0};

/// The one bit that, flipped, makes `bytes` fit a checksum that they do not fit: 8 times its byte's
/// place plus its own number; from 8 * bytes.size() on, of the checksum. kNoBit when there is none.
/// By chance one fits in a case of 2^32 / (8 * bytes.size()).
std::size_t FlippedBit(std::span<const BYTE> bytes, ULONG checksum);

}  // namespace zdm
