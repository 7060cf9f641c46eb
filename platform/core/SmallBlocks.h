// Where the small objects live that a document has by the million: side by side in pages of 64 KB
// in the order in which they are made, without a word of bookkeeping between them. So they take
// less and come and go faster than blocks of the heap, and what was made together, an object with
// its relations and parameters, is found together. What came back is used again for blocks of its
// size; a page whose blocks all came back goes back to the system, but for the one that is being
// filled. As everything about objects, on one thread at a time.
#pragma once

#include "platform/Export.h"

#include <cstddef>
#include <new>
#include <vector>

namespace zdm {

/// A base of classes whose objects, made with `new`, live in small blocks. Larger ones are of the
/// heap, and so are those that want a stricter alignment than the heap's, and all where the address
/// sanitizer watches it.
struct ZDM_API InSmallBlocks {
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept;
  static void* operator new(std::size_t size, std::align_val_t alignment);
  static void* operator new(std::size_t size, std::align_val_t alignment,
                            const std::nothrow_t& nothrow) noexcept;
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* block, std::size_t size) noexcept;
  static void operator delete(void* block, std::size_t size, std::align_val_t alignment) noexcept;
  static void operator delete(void*, void*) noexcept {}
};

struct SmallBlockUse {
  std::size_t size;   // of a block
  std::size_t count;  // of the blocks in use
};

/// One entry for each size, ascending.
ZDM_API std::vector<SmallBlockUse> GetSmallBlockUse();

}  // namespace zdm
