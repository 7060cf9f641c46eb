// What the document's named objects have in common: the name, the display attribute that was
// attached, which objects count as the same. T is IZDMObject or an interface derived from it.
// Stream form: above SaveOwnData.
#pragma once

#include "document/AttachedDispAttrib.h"
#include "document/Counterpart.h"
#include "platform/core/IZStream.h"
#include "platform/ole/Bstr.h"
#include "zdm/model/IZDMObjectImpl.h"

#include <utility>

template <class T>
class NamedObject : public IZDMObjectImpl<T> {
 public:
  using IZDMObjectImpl<T>::CopyFrom;
  using IZDMObjectImpl<T>::JudgeSame;

  /// A copy; an object that was never named leaves `*name` alone.
  void GetName(BSTR* name) override {
    if (!name_.IsNull()) name_.CopyTo(name);
  }
  /// Takes a copy; null takes the name away.
  void SetName(const OLECHAR* name) override { name_ = zdm::Bstr(name); }
  /// The one among the relations.
  IZDispAttrib* GetDispAttrib() override { return zdm::GetAttachedDispAttrib(*this); }
  void AttachDispAttrib(IZDispAttrib* attribute) override {
    zdm::AttachDispAttrib(*this, attribute);
  }
  /// The name too, of any kind of object.
  void CopyFrom(IZDMObject* source, LONG mode) override {
    if (source == nullptr) return;
    zdm::Bstr name;
    source->GetName(name.Out());
    IZDMObjectImpl<T>::CopyFrom(source, mode);
    name_ = std::move(name);
  }
  /// Inside one document the object itself; between two documents an object of the same class and
  /// the same ID.
  bool JudgeSame(IZDMObject* other) override {
    return IZDMObjectImpl<T>::JudgeSame(other) ||
           (other != nullptr && zdm::AreCounterparts(*this, *other));
  }

  // Own data: the name, as IZStream::WriteBSTR writes it.
  void SaveOwnData(IZStream* stream, IZDatabase*) override { stream->WriteBSTR(name_.Get()); }
  void LoadOwnData(IZStream* stream, IZDatabase*) override {
    zdm::Bstr name;
    stream->ReadBSTR(name.Out());
    name_ = std::move(name);
  }

 private:
  zdm::Bstr name_;
};
