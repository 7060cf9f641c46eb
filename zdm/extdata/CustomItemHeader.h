// What stands in front of the data of an item of a class of its own, 21 bytes, packed,
// little-endian. It tells a reader without the class where the item ends.
//   offset  size  field
//        0     1  tag, kExtCustom
//        1    16  class identifier
//       17     4  bytes of data that follow
#pragma once

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/extdata/ExtDataType.h"

namespace zdm {

#pragma pack(push, 1)
struct CustomItemHeader {
  BYTE tag = kExtCustom;
  GUID classId = {};
  ULONG length = 0;
};
#pragma pack(pop)
static_assert(sizeof(CustomItemHeader) == 21);

constexpr ULONG kMaxCustomLength = 0x7FFFFFFF;  // lengths are int where they cross an interface

/// Throws CAtlException(E_FAIL) for another tag and for data that the stream does not have.
inline CustomItemHeader ReadCustomItemHeader(IZStream* stream) {
  CustomItemHeader header;
  stream->Read(&header, sizeof(header));
  if (header.tag != kExtCustom || header.length > stream->GetBytesLeft() ||
      header.length > kMaxCustomLength) {
    throw CAtlException(E_FAIL);
  }
  return header;
}

}  // namespace zdm
