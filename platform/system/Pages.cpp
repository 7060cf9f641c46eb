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

// Twice as much as is wanted has such a page in it; what stands before and after goes back.
void* TakePage() noexcept {
  void* const mapped =
      mmap(nullptr, 2 * kPageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  auto* const first = static_cast<std::byte*>(mapped);
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(first) % kPageSize;
  if (before != 0) munmap(first, before);
  munmap(first + before + kPageSize, kPageSize - before);
  return first + before;
}

void GiveBackPage(void* page) noexcept { munmap(page, kPageSize); }

#endif

}  // namespace zdm
