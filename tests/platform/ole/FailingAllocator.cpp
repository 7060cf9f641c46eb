#include "FailingAllocator.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace zdm::test {

int allocationsLeft = kUnlimited;
std::size_t bytesInUse = 0;
std::size_t mostBytesInUse = 0;

}  // namespace zdm::test

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  int& left = zdm::test::allocationsLeft;
  if (left == 0) return nullptr;
  if (left > 0) --left;
  void* memory = std::malloc(size);
  zdm::test::bytesInUse += malloc_usable_size(memory);
  zdm::test::mostBytesInUse = std::max(zdm::test::mostBytesInUse, zdm::test::bytesInUse);
  return memory;
}

void* operator new(std::size_t size) {
  void* memory = operator new(size, std::nothrow);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept {
  zdm::test::bytesInUse -= malloc_usable_size(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
