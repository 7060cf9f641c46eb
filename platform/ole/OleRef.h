// Owns one reference to a system interface (IStream, IStorage, IEnumSTATSTG) while it is not null.
#pragma once

#include <utility>

namespace zdm {

template <class T>
class OleRef {
 public:
  OleRef() = default;
  /// Takes over the caller's reference.
  explicit OleRef(T* object) : object_(object) {}
  OleRef(const OleRef& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  OleRef(OleRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~OleRef() { Reset(); }
  OleRef& operator=(OleRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Releases what is held and offers the place to an out-pointer that carries one reference.
  T** Out() {
    Reset();
    return &object_;
  }
  /// Hands the reference to the caller; the pointer becomes null.
  [[nodiscard]] T* Detach() { return std::exchange(object_, nullptr); }
  void Reset() {
    if (T* old = std::exchange(object_, nullptr)) old->Release();
  }
  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
};

}  // namespace zdm
