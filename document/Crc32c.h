// CRC-32C (polynomial 0x1EDC6F41, reflected; as in RFC 3720), the checksum of the stored records.
#pragma once

#include "platform/ole/ole.h"

#include <span>

namespace zdm {

/// @param before  the checksum of what stands before `bytes`, to go on from.
ULONG Crc32c(std::span<const BYTE> bytes, ULONG before = 0);

}  // namespace zdm
