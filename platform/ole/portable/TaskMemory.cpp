#include "platform/ole/portable/TaskMemory.h"

#include <cstdlib>

LPVOID CoTaskMemAlloc(SIZE_T size) { return std::malloc(size == 0 ? 1 : size); }

LPVOID CoTaskMemRealloc(LPVOID block, SIZE_T size) {
  if (block == nullptr) return CoTaskMemAlloc(size);
  if (size == 0) {
    CoTaskMemFree(block);
    return nullptr;
  }
  return std::realloc(block, size);
}

void CoTaskMemFree(LPVOID block) { std::free(block); }
