// Values by address, for sets that are made once and asked often: all in one block, so that a
// look-up takes one access to memory where a map of nodes takes three. Nothing is taken out.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zdm {

template <class Value>
class PointerMap {
 public:
  /// For so many keys in all without another block.
  void Reserve(std::size_t count) {
    if (2 * count > slots_.size()) Grow(std::bit_ceil(2 * std::max<std::size_t>(count, 8)));
  }

  /// Null when the key is not there. Good until the next insertion.
  Value* Find(const void* key) {
    if (count_ == 0) return nullptr;
    Slot& slot = SlotOf(key);
    return slot.key != nullptr ? &slot.value : nullptr;
  }
  bool Contains(const void* key) const {
    return const_cast<PointerMap*>(this)->Find(key) != nullptr;
  }

  /// The value of the key, which is not null, and whether it is new.
  std::pair<Value*, bool> Insert(const void* key) {
    Reserve(count_ + 1);
    Slot& slot = SlotOf(key);
    const bool isNew = slot.key == nullptr;
    if (isNew) {
      slot.key = key;
      ++count_;
    }
    return {&slot.value, isNew};
  }

 private:
  struct Slot {
    const void* key = nullptr;
    [[no_unique_address]] Value value = {};
  };

  /// That of the key, or the free one that it would get.
  Slot& SlotOf(const void* key) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15ULL;  // the upper bits depend on all others
    const auto number = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key));
    const std::size_t last = slots_.size() - 1;
    auto at = static_cast<std::size_t>((number * kSpread) >> 32) & last;
    while (slots_[at].key != nullptr && slots_[at].key != key) at = (at + 1) & last;
    return slots_[at];
  }

  void Grow(std::size_t size) {
    std::vector<Slot> former(size);
    former.swap(slots_);
    for (Slot& slot : former) {
      if (slot.key != nullptr) SlotOf(slot.key) = std::move(slot);
    }
  }

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::size_t count_ = 0;
};

struct Nothing {};
using PointerSet = PointerMap<Nothing>;

}  // namespace zdm
