// Pointers that own one reference while they are not null. One family: each adds operations to the
// one before and none adds data.
//   ZRefPtrBase    holds, copies, assigns, detaches
//   ZRefPtrDirect  assigns and constructs from T* without a query
//   ZRefPtr        also from an IZObject* of any class, by a query for T
#pragma once

#include "zdm/framework/QueryZInterface.h"

#include <concepts>
#include <cstddef>
#include <utility>

template <class T>
class ZRefPtrBase {
 public:
  ZRefPtrBase() = default;
  ZRefPtrBase(const ZRefPtrBase& other) : p(other.p) { Take(); }
  ZRefPtrBase(ZRefPtrBase&& other) noexcept : p(std::exchange(other.p, nullptr)) {}
  virtual ~ZRefPtrBase() { Attach(nullptr); }

  ZRefPtrBase& operator=(const ZRefPtrBase& other) {
    if (this != &other) Assign(other.p);
    return *this;
  }
  ZRefPtrBase& operator=(ZRefPtrBase&& other) noexcept {
    if (this != &other) Attach(std::exchange(other.p, nullptr));
    return *this;
  }

  /// Takes over the caller's reference; the old object is released afterwards.
  void Attach(T* object) {
    T* old = std::exchange(p, object);
    if (old != nullptr) old->Release();
  }
  /// Hands the reference to the caller; the pointer becomes null.
  [[nodiscard]] T* Detach() { return std::exchange(p, nullptr); }
  /// Releases what is held and offers the place to an out-pointer that carries one reference.
  T** Out() {
    Attach(nullptr);
    return &p;
  }
  void Reset() { Attach(nullptr); }

  T* Get() const { return p; }
  T* operator->() const { return p; }
  T& operator*() const { return *p; }
  operator T*() const { return p; }  // borrowed

  T* p = nullptr;

 protected:
  explicit ZRefPtrBase(T* object) : p(object) { Take(); }

  void Assign(T* object) {
    if (object != nullptr) object->AddRef();
    Attach(object);
  }

 private:
  void Take() {
    if (p != nullptr) p->AddRef();
  }
};

template <class T>
class ZRefPtrDirect : public ZRefPtrBase<T> {
 public:
  ZRefPtrDirect() = default;
  ZRefPtrDirect(std::nullptr_t) {}
  ZRefPtrDirect(T* object) : ZRefPtrBase<T>(object) {}

  ZRefPtrDirect& operator=(std::nullptr_t) {
    this->Reset();
    return *this;
  }
  ZRefPtrDirect& operator=(T* object) {
    this->Assign(object);
    return *this;
  }
};

template <class T>
class ZRefPtr : public ZRefPtrDirect<T> {
 public:
  ZRefPtr() = default;
  ZRefPtr(std::nullptr_t) {}
  ZRefPtr(T* object) : ZRefPtrDirect<T>(object) {}
  template <std::same_as<IZObject> Object>
  requires(!std::same_as<T, IZObject>) ZRefPtr(Object* object) { Query(object); }

  using ZRefPtrDirect<T>::operator=;
  /// Becomes null when the object is null or does not answer to T.
  template <std::same_as<IZObject> Object>
  requires(!std::same_as<T, IZObject>) ZRefPtr& operator=(Object* object) {
    Query(object);
    return *this;
  }

  /// Queries any object for T; the old object is released after the query.
  HRESULT Query(CZObject* object) {
    void* view = nullptr;
    const HRESULT result = QueryZInterface(object, ZInterface<T>::ID(), &view);
    this->Attach(static_cast<T*>(view));
    return result;
  }
};

namespace zdm {

/// Takes over one reference, such as the one of a new object.
template <class T>
ZRefPtr<T> Attached(T* object) {
  ZRefPtr<T> held;
  held.Attach(object);
  return held;
}

/// A new object of class C, held by its view T.
template <class T, class C, class... Arguments>
ZRefPtr<T> MakeObject(Arguments&&... arguments) {
  return Attached<T>(new C(std::forward<Arguments>(arguments)...));
}

/// Clones `object` and holds the copy by its view T; null when the class cannot be copied. A copy
/// that does not answer to T ends here.
template <class T>
ZRefPtr<T> CloneAs(IZObject* object) {
  const ZRefPtr<IZObject> copy = object != nullptr ? object->Clone() : nullptr;
  ZRefPtr<T> view;
  if (copy != nullptr) view.Query(copy);
  return view;
}

}  // namespace zdm
