// An interface view that does not keep its object alive, and is null once the object is gone.
#pragma once

#include "platform/core/ZWeakHandle.h"

namespace zdm {

template <class T>
class WeakView {
 public:
  WeakView() = default;
  explicit WeakView(T* object) : object_(object), handle_(object) {}

  /// Borrowed.
  T* Get() const { return handle_.Get() != nullptr ? object_ : nullptr; }

 private:
  T* object_ = nullptr;
  ZWeakHandle handle_;
};

}  // namespace zdm
