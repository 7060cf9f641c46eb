// An allocator that runs out. A program that links FailingAllocator.cpp has it in place of the
// ordinary one, also inside the library.
#pragma once

#include <cstddef>

namespace zdm::test {

constexpr int kUnlimited = -1;
/// How many more allocations by `new` succeed.
extern int allocationsLeft;
/// What `new` has handed out, and the most of it since a test set this.
extern std::size_t bytesInUse;
extern std::size_t mostBytesInUse;

/// The result of `operation`, run with memory for `count` allocations.
template <class Operation>
auto WithAllocations(int count, Operation operation) {
  allocationsLeft = count;
  const auto result = operation();
  allocationsLeft = kUnlimited;
  return result;
}

}  // namespace zdm::test
