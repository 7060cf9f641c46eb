// The library's stream over bytes in memory.
#pragma once

#include "platform/core/CZStream.h"
#include "platform/ole/BytesStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/ZRefPtr.h"

namespace zdm {

/// A stream over `bytes`, which are borrowed and must outlive it. Throws CAtlException without
/// memory.
inline ZRefPtr<IZStream> StreamOver(BytesStream& bytes) {
  auto stream = MakeObject<IZStream, CZStream>();
  const HRESULT result = stream->AttachStream(&bytes);
  if (FAILED(result)) throw CAtlException(result);
  return stream;
}

}  // namespace zdm
