// The task allocator: memory that one module allocates and another frees.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Types.h"

/// `size` bytes, uninitialised; a block of its own also for 0. Null when memory runs out.
ZDM_API LPVOID CoTaskMemAlloc(SIZE_T size);
/// Resizes `block`, keeping its bytes; null `block` allocates. Size 0 frees a block and answers
/// null. When memory runs out: null, and `block` stays as it was.
ZDM_API LPVOID CoTaskMemRealloc(LPVOID block, SIZE_T size);
/// Null does nothing.
ZDM_API void CoTaskMemFree(LPVOID block);
