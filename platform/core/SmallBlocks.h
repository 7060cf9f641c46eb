// Where the small objects live that a document has by the million: side by side in pages of 64 KB
// in the order in which they are made, without a word of bookkeeping between them. So they take
// less and come and go faster than blocks of the heap, and what was made together, a parameter with
// its value and its relation, is found together. What others refer to from everywhere has pages of
// its own, where much of it is near. What came back is used again for blocks of its size; a page
// whose blocks all came back goes back to the system, but for the one that is being filled. As
// everything about objects, on one thread at a time.
#pragma once

#include "platform/Export.h"

#include <cstddef>
#include <new>
#include <vector>

namespace zdm {

enum class BlockKind {
  kPart,    // of an object
  kObject,  // of a document
  kRecord   // of an object, by which others refer to it
};

/// Throws std::bad_alloc without memory. A large block is of the heap, and so are all where the
/// address sanitizer watches it.
ZDM_API void* TakeBlock(BlockKind kind, std::size_t size);
/// Null without memory.
ZDM_API void* TakeBlock(BlockKind kind, std::size_t size, const std::nothrow_t& nothrow) noexcept;
/// Kind and size are those that it was taken with.
ZDM_API void GiveBackBlock(BlockKind kind, void* block, std::size_t size) noexcept;

/// A base of classes whose objects, made with `new`, live in small blocks, unless they want a
/// stricter alignment than those of the heap.
template <BlockKind kind>
struct InBlocks {
  static void* operator new(std::size_t size) { return TakeBlock(kind, size); }
  static void* operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return TakeBlock(kind, size, nothrow);
  }
  static void* operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
  }
  static void* operator new(std::size_t size, std::align_val_t alignment,
                            const std::nothrow_t& nothrow) noexcept {
    return ::operator new(size, alignment, nothrow);
  }
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* block, std::size_t size) noexcept {
    GiveBackBlock(kind, block, size);
  }
  static void operator delete(void* block, std::size_t, std::align_val_t alignment) noexcept {
    ::operator delete(block, alignment);
  }
  static void operator delete(void*, void*) noexcept {}
};

using InSmallBlocks = InBlocks<BlockKind::kPart>;

struct SmallBlockUse {
  std::size_t size;   // of a block
  std::size_t count;  // of the blocks in use
};

/// One entry for each size, ascending.
ZDM_API std::vector<SmallBlockUse> GetSmallBlockUse();
/// The pages that are held.
ZDM_API std::size_t CountBlockPages();

}  // namespace zdm
