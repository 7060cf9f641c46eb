// The value that a parameter holds: one of its own, or none. A number or a truth value stands in
// the parameter itself, so that reading it has no other block to go through.
#pragma once

#include "zdm/relations/ZDfValues.h"

#include <cstddef>
#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zdm {

class HeldValue {
 public:
  HeldValue() = default;
  HeldValue(const HeldValue&) = delete;
  HeldValue& operator=(const HeldValue&) = delete;
  ~HeldValue() { End(value_); }

  /// Borrowed; null without a value.
  ZDfValue* Get() const { return value_; }
  bool IsNull() const { return value_ == nullptr; }
  /// The value if it is a V, otherwise null.
  template <class V>
  V* As() const {
    // Nearly always it is just a V, which is cheaper to see than whether it is derived from one.
    if (value_ == nullptr || typeid(*value_) == typeid(V)) return static_cast<V*>(value_);
    return dynamic_cast<V*>(value_);
  }

  /// Takes `value` (may be null) over; the former one ends.
  void Attach(ZDfValue* value) {
    if (TakeIn<ZDfDouble>(value) || TakeIn<ZDfLong>(value) || TakeIn<ZDfBool>(value)) return;
    Hold(value);
  }
  /// A clone of `value` in place of the former one, which it may be part of.
  void CopyFrom(const ZDfValue& value) {
    ZDfValue* copy = nullptr;
    const_cast<ZDfValue&>(value).Clone(&copy);  // changes nothing in it
    Attach(copy);
  }
  /// The value, which is a V then: the present one where it is, otherwise a new one.
  template <class V>
  V& Make() {
    if (V* present = As<V>()) return *present;
    if constexpr (kStandsHere<V>) {
      return Place<V>();
    } else {
      auto* made = new V;
      Hold(made);
      return *made;
    }
  }

 private:
  static constexpr std::size_t kRoom = sizeof(ZDfDouble);
  template <class V>
  static constexpr bool kStandsHere = std::is_arithmetic_v<decltype(V::Value)> &&
                                      sizeof(V) <= kRoom;

  bool IsHere(const ZDfValue* value) const { return static_cast<const void*>(value) == place_; }

  void End(ZDfValue* value) {
    if (value == nullptr) return;
    if (IsHere(value)) {
      value->~ZDfValue();
    } else {
      value->Release();
    }
  }

  void Hold(ZDfValue* value) { End(std::exchange(value_, value)); }

  /// A new V that stands here.
  template <class V>
  V& Place() {
    if (IsHere(value_)) End(std::exchange(value_, nullptr));
    V* const made = ::new (place_) V;
    Hold(made);
    return *made;
  }

  /// True for a value that is just a V, which has ended then.
  template <class V>
  bool TakeIn(ZDfValue* value) {
    if (value == nullptr || typeid(*value) != typeid(V)) return false;
    const auto payload = static_cast<V*>(value)->Value;
    value->Release();
    Place<V>().Value = payload;
    return true;
  }

  ZDfValue* value_ = nullptr;
  alignas(ZDfDouble) std::byte place_[kRoom];
};

}  // namespace zdm
