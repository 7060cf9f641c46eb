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
constexpr std::size_t kSizes = kLargest / kGrain;

struct Block {
  Block* next;
};

/// What a page begins with.
struct alignas(kGrain) Page {
  /// Blocks of one size that came back, and the page's place among those that have some.
  struct Holes {
    Block* first;
    Page* next;
    Page* former;
  };

  std::byte* fresh;  // from here on no block was used yet
  std::size_t used;
  Holes holes[kSizes];
};

std::byte* FirstBlock(Page& page) { return reinterpret_cast<std::byte*>(&page + 1); }

Page& PageOf(void* block) {
  return *reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(block) & ~(kPageSize - 1));
}

std::size_t Room(const Page& page) {
  const std::byte* const end = reinterpret_cast<const std::byte*>(&page) + kPageSize;
  return static_cast<std::size_t>(end - page.fresh);
}

std::size_t IndexOf(std::size_t size) { return (size - 1) / kGrain; }
std::size_t BlockSize(std::size_t index) { return (index + 1) * kGrain; }

/// The pages of one kind. A block comes out of a hole of its size, else out of the page that is
/// being filled.
class Blocks {
 public:
  void* Take(std::size_t index) noexcept {
    void* const block = holed_[index] != nullptr ? TakeHole(index) : TakeFresh(BlockSize(index));
    if (block == nullptr) return nullptr;
    ++PageOf(block).used;
    ++used_[index];
    return block;
  }

  void GiveBack(void* block, std::size_t index) noexcept {
    Page& page = PageOf(block);
    AddHole(page, block, index);
    --used_[index];
    if (--page.used == 0) Clear(page);
  }

  /// The page that is being filled, if nothing is in it.
  void DropEmpty() noexcept {
    if (filled_ == nullptr || filled_->used != 0) return;
    GiveBackPage(filled_);
    --pages_;
    filled_ = nullptr;
  }

  std::size_t GetUsed(std::size_t index) const { return used_[index]; }
  std::size_t GetPages() const { return pages_; }

 private:
  void* TakeHole(std::size_t index) noexcept {
    Page& page = *holed_[index];
    Block* const block = page.holes[index].first;
    page.holes[index].first = block->next;
    if (block->next == nullptr) Unlink(page, index);
    return block;
  }

  void* TakeFresh(std::size_t size) noexcept {
    if ((filled_ == nullptr || Room(*filled_) < size) && !AddPage()) return nullptr;
    void* const block = filled_->fresh;
    filled_->fresh += size;
    return block;
  }

  /// What is left of the former page is one hole.
  bool AddPage() noexcept {
    void* const memory = TakePage();
    if (memory == nullptr) return false;
    ++pages_;
    if (filled_ != nullptr && Room(*filled_) != 0) {
      AddHole(*filled_, filled_->fresh, IndexOf(Room(*filled_)));
    }
    filled_ = ::new (memory) Page{};
    filled_->fresh = FirstBlock(*filled_);
    return true;
  }

  void AddHole(Page& page, void* place, std::size_t index) noexcept {
    Page::Holes& holes = page.holes[index];
    if (holes.first == nullptr) Link(page, index);
    holes.first = ::new (place) Block{holes.first};
  }

  /// Nothing in it is used any more.
  void Clear(Page& page) noexcept {
    for (std::size_t index = 0; index < kSizes; ++index) {
      if (page.holes[index].first == nullptr) continue;
      Unlink(page, index);
      page.holes[index].first = nullptr;
    }
    if (&page == filled_) {
      page.fresh = FirstBlock(page);
    } else {
      GiveBackPage(&page);
      --pages_;
    }
  }

  void Link(Page& page, std::size_t index) noexcept {
    Page*& first = holed_[index];
    page.holes[index].next = first;
    page.holes[index].former = nullptr;
    if (first != nullptr) first->holes[index].former = &page;
    first = &page;
  }

  void Unlink(Page& page, std::size_t index) noexcept {
    const Page::Holes& holes = page.holes[index];
    (holes.former != nullptr ? holes.former->holes[index].next : holed_[index]) = holes.next;
    if (holes.next != nullptr) holes.next->holes[index].former = holes.former;
  }

  Page* filled_ = nullptr;
  Page* holed_[kSizes] = {};  // by size, the first page that has holes of it
  std::size_t used_[kSizes] = {};
  std::size_t pages_ = 0;
};

// Never destroyed: what other static objects hold may come back late.
constinit Blocks kinds[3];

Blocks& Of(BlockKind kind) { return kinds[static_cast<std::size_t>(kind)]; }

/// When the library goes, so do the pages that were kept.
const struct LastPages {
  ~LastPages() {
    for (Blocks& each : kinds) each.DropEmpty();
  }
} lastPages;

bool IsSmall(std::size_t size) { return ZDM_WATCHED_HEAP == 0 && size <= kLargest; }

}  // namespace

void* TakeBlock(BlockKind kind, std::size_t size) {
  if (!IsSmall(size)) return ::operator new(size);
  void* const block = Of(kind).Take(IndexOf(size));
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* TakeBlock(BlockKind kind, std::size_t size, const std::nothrow_t& nothrow) noexcept {
  return IsSmall(size) ? Of(kind).Take(IndexOf(size)) : ::operator new(size, nothrow);
}

void GiveBackBlock(BlockKind kind, void* block, std::size_t size) noexcept {
  if (block == nullptr) return;
  if (IsSmall(size)) {
    Of(kind).GiveBack(block, IndexOf(size));
  } else {
    ::operator delete(block);
  }
}

std::size_t CountBlockPages() {
  std::size_t count = 0;
  for (const Blocks& each : kinds) count += each.GetPages();
  return count;
}

std::vector<SmallBlockUse> GetSmallBlockUse() {
  std::vector<SmallBlockUse> uses;
  for (std::size_t index = 0; index < kSizes; ++index) {
    std::size_t count = 0;
    for (const Blocks& each : kinds) count += each.GetUsed(index);
    uses.push_back({BlockSize(index), count});
  }
  return uses;
}

}  // namespace zdm
