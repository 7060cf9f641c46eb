#include "FailingAllocator.h"

#include <cstdlib>
#include <new>

namespace zdm::test {

int allocationsLeft = kUnlimited;

}  // namespace zdm::test

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  int& left = zdm::test::allocationsLeft;
  if (left == 0) return nullptr;
  if (left > 0) --left;
  return std::malloc(size);
}

void* operator new(std::size_t size) {
  void* memory = operator new(size, std::nothrow);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
