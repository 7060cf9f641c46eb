// The value that a parameter holds: one of its own, or none.
#pragma once

#include "zdm/relations/ZDfValues.h"

#include <memory>
#include <typeinfo>

namespace zdm {

class HeldValue {
 public:
  /// Borrowed; null without a value.
  ZDfValue* Get() const { return value_.get(); }
  bool IsNull() const { return value_ == nullptr; }
  /// The value if it is a V, otherwise null.
  template <class V>
  V* As() const {
    ZDfValue* const value = value_.get();
    // Nearly always it is just a V, which is cheaper to see than whether it is derived from one.
    if (value == nullptr || typeid(*value) == typeid(V)) return static_cast<V*>(value);
    return dynamic_cast<V*>(value);
  }

  /// Takes `value` (may be null) over; the former one ends.
  void Attach(ZDfValue* value) { value_.reset(value); }
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
    auto* made = new V;
    Attach(made);
    return *made;
  }

 private:
  struct Ended {
    void operator()(ZDfValue* value) const { value->Release(); }
  };

  std::unique_ptr<ZDfValue, Ended> value_;
};

}  // namespace zdm
