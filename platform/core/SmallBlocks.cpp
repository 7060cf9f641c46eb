#include "platform/core/SmallBlocks.h"

#include "platform/system/Pages.h"

#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define ZDM_WATCHED_HEAP 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZDM_WATCHED_HEAP 1
#endif
#endif
#if !defined(ZDM_WATCHED_HEAP)
#define ZDM_WATCHED_HEAP 0
#endif

namespace zdm {

namespace {

constexpr std::size_t kGrain = 16;  // what blocks are aligned to, as those of the heap are
constexpr std::size_t kLargest = 512;

struct Block {
  Block* next;
};

/// What a page begins with.
struct alignas(kGrain) Page {
  Page* next;
  Page* former;
  Block* free;       // blocks that came back
  std::byte* fresh;  // from here on no block was used yet
  std::size_t used;
};

bool IsFull(const Page& page, std::size_t size) {
  const std::byte* const end = reinterpret_cast<const std::byte*>(&page) + kPageSize;
  return page.free == nullptr && static_cast<std::size_t>(end - page.fresh) < size;
}

/// The pages of one size that have room, in a list.
class SizeClass {
 public:
  void* Take(std::size_t size) noexcept {
    if (first_ == nullptr && !AddPage()) return nullptr;
    Page& page = *first_;
    void* block = page.free;
    if (block != nullptr) {
      page.free = page.free->next;
    } else {
      block = page.fresh;
      page.fresh += size;
    }
    ++page.used;
    ++used_;
    if (IsFull(page, size)) Unlink(page);
    return block;
  }

  void GiveBack(void* block, std::size_t size) noexcept {
    auto& page =
        *reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(block) & ~(kPageSize - 1));
    if (IsFull(page, size)) Link(page);
    page.free = ::new (block) Block{page.free};
    --used_;
    if (--page.used == 0 && (page.next != nullptr || page.former != nullptr)) Drop(page);
  }

  /// The page that was kept.
  void DropEmpty() noexcept {
    if (first_ != nullptr && first_->used == 0) Drop(*first_);
  }

  std::size_t GetUsed() const { return used_; }

 private:
  bool AddPage() noexcept {
    void* const memory = TakePage();
    if (memory == nullptr) return false;
    auto* const page = ::new (memory) Page{};
    page->fresh = reinterpret_cast<std::byte*>(page + 1);
    Link(*page);
    return true;
  }

  void Link(Page& page) noexcept {
    page.next = first_;
    page.former = nullptr;
    if (first_ != nullptr) first_->former = &page;
    first_ = &page;
  }

  void Unlink(Page& page) noexcept {
    (page.former != nullptr ? page.former->next : first_) = page.next;
    if (page.next != nullptr) page.next->former = page.former;
  }

  void Drop(Page& page) noexcept {
    Unlink(page);
    GiveBackPage(&page);
  }

  Page* first_ = nullptr;
  std::size_t used_ = 0;
};

// Never destroyed: what other static objects hold may come back late.
constinit SizeClass classes[kLargest / kGrain];

/// When the library goes, so do the pages that were kept.
const struct LastPages {
  ~LastPages() {
    for (SizeClass& each : classes) each.DropEmpty();
  }
} lastPages;

/// Null for a size that is the heap's.
SizeClass* ClassOf(std::size_t size) {
  if (ZDM_WATCHED_HEAP != 0 || size > kLargest) return nullptr;
  return &classes[(size - 1) / kGrain];
}

std::size_t BlockSize(std::size_t size) { return (size + kGrain - 1) / kGrain * kGrain; }

}  // namespace

void* InSmallBlocks::operator new(std::size_t size) {
  SizeClass* const sizeClass = ClassOf(size);
  if (sizeClass == nullptr) return ::operator new(size);
  void* const block = sizeClass->Take(BlockSize(size));
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* InSmallBlocks::operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept {
  SizeClass* const sizeClass = ClassOf(size);
  return sizeClass != nullptr ? sizeClass->Take(BlockSize(size)) : ::operator new(size, nothrow);
}

void InSmallBlocks::operator delete(void* block, std::size_t size) noexcept {
  if (block == nullptr) return;
  if (SizeClass* const sizeClass = ClassOf(size)) {
    sizeClass->GiveBack(block, BlockSize(size));
  } else {
    ::operator delete(block);
  }
}

void* InSmallBlocks::operator new(std::size_t size, std::align_val_t alignment) {
  return ::operator new(size, alignment);
}

void* InSmallBlocks::operator new(std::size_t size, std::align_val_t alignment,
                                  const std::nothrow_t& nothrow) noexcept {
  return ::operator new(size, alignment, nothrow);
}

void InSmallBlocks::operator delete(void* block, std::size_t, std::align_val_t alignment) noexcept {
  ::operator delete(block, alignment);
}

std::vector<SmallBlockUse> GetSmallBlockUse() {
  std::vector<SmallBlockUse> uses;
  std::size_t size = 0;
  for (const SizeClass& each : classes) uses.push_back({size += kGrain, each.GetUsed()});
  return uses;
}

}  // namespace zdm
