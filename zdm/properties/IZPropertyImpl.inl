#pragma once

#include "zdm/framework/CreateAs.h"

#include <utility>

template <class T>
IZObject* IZPropertyImpl<T>::Clone() {
  GUID classId = GUID_NULL;
  this->GetClassID(&classId);
  ZRefPtr<IZProperty> copy = zdm::CreateAs<IZProperty>(classId);
  if (copy == nullptr) return nullptr;
  copy->CopyFrom(this);
  IZObject* result = copy->GetIZObject();
  copy.Detach()->ForgetReference();
  return result;
}

template <class T>
bool IZPropertyImpl<T>::TakeFrom(IZProperty* source) {
  if (source == nullptr || source == this) return false;
  GUID own = GUID_NULL;
  GUID others = GUID_NULL;
  if (FAILED(this->GetClassID(&own)) || FAILED(source->GetClassID(&others))) return false;
  if (!(own == others)) return false;
  const Record& from = static_cast<IZPropertyImpl*>(source)->record_;

  zdm::Variant value;
  source->GetVariant(value.Out());
  zdm::Bstr name = from.name;
  zdm::Bstr displayName = from.displayName;
  SetObject(source->GetObject());
  // From here on nothing fails.
  record_.value = std::move(value);
  record_.guid = from.guid;
  record_.extra2 = from.extra2;
  record_.extra1 = from.extra1;
  record_.name = std::move(name);
  record_.displayName = std::move(displayName);
  record_.type = from.type;
  record_.flags = from.flags;
  return true;
}

template <class T>
bool IZPropertyImpl<T>::MergeWith(IZProperty* other) {
  if (other == nullptr) return false;
  if (!other->IsFlag20()) {
    this->SetReadOnly(true);
    return false;
  }
  if (!this->IsValueUniform() || !other->IsValueUniform()) return false;
  zdm::Variant others;
  other->GetVariant(others.Out());
  if (zdm::SameValue(record_.value.Get(), others.Get())) return true;
  this->SetValueUniform(false);
  return false;
}

template <class T>
void IZPropertyImpl<T>::ResetValue() {
  record_.value = zdm::Variant();
  record_.Set(Record::kUniform, true);
}

template <class T>
GUID* IZPropertyImpl<T>::GetGUID(GUID* out) {
  *out = record_.guid;
  return out;
}

template <class T>
void IZPropertyImpl<T>::SetEnds(bool includeMinimum, bool includeMaximum) {
  record_.Set(Record::kIncludesMinimum, includeMinimum);
  record_.Set(Record::kIncludesMaximum, includeMaximum);
}

template <class T>
void IZPropertyImpl<T>::GetEnds(bool* includeMinimum, bool* includeMaximum) const {
  *includeMinimum = record_.Has(Record::kIncludesMinimum);
  *includeMaximum = record_.Has(Record::kIncludesMaximum);
}

template <class T>
void IZPropertyImpl<T>::SetRange(double minimum, double maximum, bool includeMinimum,
                                 bool includeMaximum) {
  record_.minimum = minimum;
  record_.maximum = maximum;
  SetEnds(includeMinimum, includeMaximum);
}

template <class T>
void IZPropertyImpl<T>::GetRange(double* minimum, double* maximum, bool* includeMinimum,
                                 bool* includeMaximum) {
  *minimum = record_.minimum;
  *maximum = record_.maximum;
  GetEnds(includeMinimum, includeMaximum);
}

template <class T>
void IZPropertyImpl<T>::SetIntRange(LONG minimum, LONG maximum, bool includeMinimum,
                                    bool includeMaximum) {
  record_.intMinimum = minimum;
  record_.intMaximum = maximum;
  SetEnds(includeMinimum, includeMaximum);
}

template <class T>
void IZPropertyImpl<T>::GetIntRange(LONG* minimum, LONG* maximum, bool* includeMinimum,
                                    bool* includeMaximum) {
  *minimum = record_.intMinimum;
  *maximum = record_.intMaximum;
  GetEnds(includeMinimum, includeMaximum);
}

template <class T>
void IZPropertyImpl<T>::SetShort(SHORT value) {
  VARIANT* held = record_.value.Out();
  held->vt = VT_I2;
  held->iVal = value;
}

template <class T>
void IZPropertyImpl<T>::SetULong(ULONG value) {
  VARIANT* held = record_.value.Out();
  held->vt = VT_UI4;
  held->ulVal = value;
}

template <class T>
void IZPropertyImpl<T>::GetString(BSTR* out) {
  *out = nullptr;
  if (Holds(VT_BSTR)) *out = zdm::Bstr::CopyOf(record_.value.Get().bstrVal).Detach();
}

template <class T>
void IZPropertyImpl<T>::SetObject(const ZDfValue* object) {
  ZDfValue* copy = nullptr;
  // A clone changes nothing in what it is made from.
  if (object != nullptr) const_cast<ZDfValue*>(object)->Clone(&copy);
  object_.reset(copy);
}
