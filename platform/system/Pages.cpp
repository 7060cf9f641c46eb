#include "platform/system/Pages.h"

#if defined(_WIN32)
#include "platform/ole/ole.h"
#else
#include <sys/mman.h>

#include <cstdint>
#endif

namespace zdm {

#if defined(_WIN32)

// What the system reserves always begins at a multiple of 64 KB.
void* TakePage() noexcept {
  return VirtualAlloc(nullptr, kPageSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void GiveBackPage(void* page) noexcept { VirtualFree(page, 0, MEM_RELEASE); }

#else

namespace {

/// Pages side by side that nobody has taken yet. One call to the system maps many of them; each
/// goes back by itself. Never destroyed: pages may be taken and come back late.
class Region {
 public:
  void* Take() noexcept {
    if (begin_ == end_ && !Map()) return nullptr;
    void* const page = begin_;
    begin_ += kPageSize;
    // Who holds as many as this fills them: sooner made at once than fault by fault.
#ifdef MADV_POPULATE_WRITE
    if (taken_ > kMany) madvise(page, kPageSize, MADV_POPULATE_WRITE);
#endif
    ++taken_;
    return page;
  }

  void GiveBack(void* page) noexcept {
    munmap(page, kPageSize);
    --taken_;
  }

  void GiveBackRest() noexcept {
    if (begin_ != end_) munmap(begin_, static_cast<std::size_t>(end_ - begin_));
    begin_ = end_ = nullptr;
  }

 private:
  static constexpr std::size_t kMany = 64;
  static constexpr std::size_t kSize = kMany * kPageSize;

  // What is mapped has one page more, so that such a region is in it; the rest goes back.
  bool Map() noexcept {
    void* const mapped = mmap(nullptr, kSize + kPageSize, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return false;
    auto* const first = static_cast<std::byte*>(mapped);
    const std::size_t before = -reinterpret_cast<std::uintptr_t>(first) % kPageSize;
    if (before != 0) munmap(first, before);
    munmap(first + before + kSize, kPageSize - before);
    begin_ = first + before;
    end_ = begin_ + kSize;
    return true;
  }

  std::byte* begin_ = nullptr;
  std::byte* end_ = nullptr;
  std::size_t taken_ = 0;
};

constinit Region region;

/// When the library goes, so does what nobody took.
const struct LastRegion {
  ~LastRegion() { region.GiveBackRest(); }
} lastRegion;

}  // namespace

void* TakePage() noexcept { return region.Take(); }

void GiveBackPage(void* page) noexcept { region.GiveBack(page); }

#endif

}  // namespace zdm
