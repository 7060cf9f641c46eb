// What stands in front of the data of an item of a class of its own, 21 bytes,
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

constexpr ULONG kMaxCustomLength = 0x7FFFFFFF;  // lengths are int where they cross an interface

struct CustomItemHeader {
  GUID classId;
  ULONG length;
};

/// Throws CAtlException(E_FAIL) for another tag and for data that the stream does not have.
inline CustomItemHeader ReadCustomItemHeader(IZStream* stream) {
  BYTE tag = kExtNone;
  CustomItemHeader header = {};
  stream->Read(&tag, sizeof(tag));
  stream->Read(&header.classId, sizeof(header.classId));
  stream->Read(&header.length, sizeof(header.length));
  if (tag != kExtCustom || header.length > kMaxCustomLength ||
      header.length > stream->GetBytesLeft()) {
    throw CAtlException(E_FAIL);
  }
  return header;
}

inline void WriteCustomItemHeader(IZStream* stream, const CustomItemHeader& header) {
  constexpr BYTE kTag = kExtCustom;
  stream->Write(&kTag, sizeof(kTag));
  stream->Write(&header.classId, sizeof(header.classId));
  stream->Write(&header.length, sizeof(header.length));
}

}  // namespace zdm
