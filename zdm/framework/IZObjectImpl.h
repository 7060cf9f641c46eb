// The three operations of IZObject for any interface T: counted, and not copyable unless the class
// overrides Clone.
#pragma once

#include "platform/core/IZObject.h"

template <class T>
class IZObjectImpl : public T {
 public:
  using T::Clone;  // forms of its own that an interface may add

  ULONG Release() override { return this->DecrementCount(); }
  ULONG AddRef() override { return this->IncrementCount(); }
  IZObject* Clone() override { return nullptr; }
};
