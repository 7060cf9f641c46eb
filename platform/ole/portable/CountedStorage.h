// Counting and interface query for the classes behind IStream, IStorage and IEnumSTATSTG.
// A new object has count 1: its creator's reference.
#pragma once

#include "platform/ole/portable/Guid.h"
#include "platform/ole/portable/Stream.h"

#include <atomic>

namespace zdm {

template <class Interface>
class CountedStorage : public Interface {
 public:
  CountedStorage(const CountedStorage&) = delete;
  CountedStorage& operator=(const CountedStorage&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) final {
    if (out == nullptr) return E_POINTER;
    *out = iid == IID_IUnknown || Answers(iid) ? static_cast<Interface*>(this) : nullptr;
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() final { return ++count_; }
  ULONG STDMETHODCALLTYPE Release() final {
    const ULONG left = --count_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  CountedStorage() = default;
  virtual ~CountedStorage() = default;

 private:
  virtual bool Answers(REFIID iid) const = 0;

  std::atomic<ULONG> count_ = 1;
};

}  // namespace zdm
