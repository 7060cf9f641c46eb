// The heap blocks that the library's objects of W(n) take:
//   workload_blocks
// prints a line for each size, "SIZE COUNT", with the number of blocks a thousand objects.
#include "bench/workload/LibraryDocument.h"
#include "platform/core/SmallBlocks.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>

namespace {

constexpr std::size_t kLargest = 4096;  // larger ones are tables of the document, not of an object

// What is allocated of the heap now, by the size of its blocks.
std::map<std::size_t, long long>* counts = nullptr;
bool isCounting = true;

}  // namespace

// The C library's own allocator under these names.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void __libc_free(void* block);

extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
  void* block = __libc_malloc(size);
  if (counts != nullptr && isCounting && block != nullptr) {
    isCounting = false;
    ++(*counts)[malloc_usable_size(block)];
    isCounting = true;
  }
  return block;
}

extern "C" __attribute__((visibility("default"))) void free(void* block) noexcept {
  if (counts != nullptr && isCounting && block != nullptr) {
    isCounting = false;
    --(*counts)[malloc_usable_size(block)];
    isCounting = true;
  }
  __libc_free(block);
}

namespace {

std::map<std::size_t, long long> CountsOf(std::uint32_t n) {
  const std::vector<workload::ObjectPlan> plans = workload::DrawObjects(n);
  workload::LibraryDocument document;
  static std::map<std::size_t, long long> found;
  found.clear();
  const std::vector<zdm::SmallBlockUse> before = zdm::GetSmallBlockUse();
  counts = &found;
  document.Build(plans);
  counts = nullptr;
  std::size_t i = 0;
  for (const auto& [size, count] : zdm::GetSmallBlockUse()) {
    if (count > before[i].count) found[size] += static_cast<long long>(count - before[i].count);
    ++i;
  }
  return found;
}

}  // namespace

int main() {
  CountsOf(10);  // what the library keeps from its first use on
  const auto few = CountsOf(1000);
  for (const auto& [size, count] : CountsOf(2000)) {
    const auto before = few.find(size);
    const long long more = count - (before != few.end() ? before->second : 0);
    if (more > 0 && size <= kLargest) std::printf("%zu %lld\n", size, more);
  }
  return 0;
}
