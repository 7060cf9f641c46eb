// What every extended-data item has whatever it holds: a name, and copies made by class identifier.
// T is IZExtData or an interface derived from it.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/extdata/IZExtData.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/IZObjectImpl.h"

namespace zdm {

template <class T>
class ExtDataNamed : public IZObjectImpl<T> {
 public:
  using IZObjectImpl<T>::Clone;

  void GetName(BSTR* out) override { name_.CopyTo(out); }
  void SetName(const OLECHAR* name) override { name_ = Bstr(name); }
  /// Null when the factory does not know the class.
  void Clone(IZExtData** out) override {
    *out = nullptr;
    GUID classId = GUID_NULL;
    this->GetClassID(&classId);
    ZRefPtr<IZExtData> copy = CreateAs<IZExtData>(classId);
    if (copy == nullptr) return;
    copy->CopyFrom(this);
    *out = copy.Detach();
  }

 protected:
  Bstr name_;
};

}  // namespace zdm
