// The place of an interface operation, read from its member pointer: what a caller compiled
// elsewhere would use. Counts operations from 0, as the numbers behind them in the headers do.
#pragma once

#include "platform/core/IZObject.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <type_traits>

namespace zdm::test {

/// -1 for a function that is not virtual.
template <class C, class Function>
int SlotOf(Function C::*operation) {
  // Both compilers lay a pointer to a virtual function out as 1 + its offset in the vtable.
  struct {
    std::ptrdiff_t function;
    std::ptrdiff_t adjustment;
  } layout;
  static_assert(sizeof(layout) == sizeof(operation));
  std::memcpy(&layout, &operation, sizeof(layout));
  if (layout.function % 2 == 0) return -1;
  const int entry = static_cast<int>(layout.function / static_cast<int>(sizeof(void*)));
  // A destructor takes two entries: in CZObject behind getZRClass, as one of its operations; in an
  // interface behind IZObject's three, as none.
  if constexpr (std::is_base_of_v<IZObject, C>) {
    return entry < 5 ? entry : entry - 2;
  } else {
    return entry < 2 ? entry : entry - 1;
  }
}

/// The place of one overload.
template <class Signature, class C>
int SlotOfOverload(Signature C::*operation) {
  return SlotOf(operation);
}

struct Slot {
  const char* name;
  int actual;
};

/// The operations take consecutive places from `first` on.
inline void ExpectInOrder(int first, std::initializer_list<Slot> slots) {
  for (const Slot& slot : slots) EXPECT_EQ(slot.actual, first++) << slot.name;
}

}  // namespace zdm::test

#define ZDM_SLOT(Interface, operation) \
  zdm::test::Slot { #Interface "::" #operation, zdm::test::SlotOf(&Interface::operation) }

// ZDM_EXPECT_SLOTS(first, Interface, operations...): they take consecutive places from `first` on.
#define ZDM_EXPECT_SLOTS(first, Interface, ...) \
  zdm::test::ExpectInOrder(first, {ZDM_SLOTS_256(ZDM_SLOTS(Interface, __VA_ARGS__))})
#define ZDM_SLOTS(Interface, operation, ...) \
  ZDM_SLOT(Interface, operation),            \
      __VA_OPT__(ZDM_SLOTS_AGAIN ZDM_NOTHING()()(Interface, __VA_ARGS__))
#define ZDM_SLOTS_AGAIN() ZDM_SLOTS
#define ZDM_NOTHING()
#define ZDM_SLOTS_256(...) ZDM_SLOTS_64(ZDM_SLOTS_64(ZDM_SLOTS_64(ZDM_SLOTS_64(__VA_ARGS__))))
#define ZDM_SLOTS_64(...) ZDM_SLOTS_16(ZDM_SLOTS_16(ZDM_SLOTS_16(ZDM_SLOTS_16(__VA_ARGS__))))
#define ZDM_SLOTS_16(...) ZDM_SLOTS_4(ZDM_SLOTS_4(ZDM_SLOTS_4(ZDM_SLOTS_4(__VA_ARGS__))))
#define ZDM_SLOTS_4(...) ZDM_SLOTS_1(ZDM_SLOTS_1(ZDM_SLOTS_1(ZDM_SLOTS_1(__VA_ARGS__))))
#define ZDM_SLOTS_1(...) __VA_ARGS__
