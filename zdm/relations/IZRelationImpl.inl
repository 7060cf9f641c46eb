#pragma once

#include "platform/core/IZStream.h"
#include "zdm/framework/CreateAs.h"

template <class T>
IZObject* IZRelationImpl<T>::Clone() {
  IZRelation* copy = nullptr;
  this->Clone(&copy);
  if (copy != nullptr) copy->ForgetReference();
  return copy;
}

template <class T>
void IZRelationImpl<T>::CopyFrom(IZRelation* other) {
  if (other == nullptr) return;
  TakeStatus(static_cast<ULONG>(other->GetReltnStatus()));
  tag_ = other->GetReltnTag();
}

template <class T>
void IZRelationImpl<T>::SetReltnDiffusible(bool diffusible) {
  if (diffusible) {
    this->SetReltnStatus(ZRS_DIFFUSIBLE);
  } else {
    this->ClearReltnStatus(ZRS_DIFFUSIBLE);
  }
}

// Relation record, 12 bytes, little-endian.
//   offset  size  field
//        0     4  status word (ZRS_...)
//        4     4  tag, signed
//        8     4  spare word, kept as read
template <class T>
void IZRelationImpl<T>::Save(IZStream* stream, IZDatabase*) {
  const LONG record[3] = {static_cast<LONG>(status_), tag_, static_cast<LONG>(spare_)};
  stream->Write(record, sizeof(record));
}

template <class T>
void IZRelationImpl<T>::Load(IZStream* stream, IZDatabase*) {
  LONG record[3];
  stream->Read(record, sizeof(record));
  TakeStatus(static_cast<ULONG>(record[0]));
  tag_ = record[1];
  spare_ = static_cast<ULONG>(record[2]);
}

template <class T>
bool IZRelationImpl<T>::JudgeSame(IZRelation* other) {
  if (other == nullptr) return false;
  GUID left = GUID_NULL;
  GUID right = GUID_NULL;
  this->GetClassID(&left);
  other->GetClassID(&right);
  return left == right;
}

template <class T>
void IZRelationImpl<T>::Clone(IZRelation** out) {
  *out = nullptr;
  GUID classId = GUID_NULL;
  this->GetClassID(&classId);
  ZRefPtr<IZRelation> copy = zdm::CreateAs<IZRelation>(classId);
  if (copy == nullptr) return;
  copy->SetReltnStatus(this->GetReltnStatus());
  copy->SetReltnTag(this->GetReltnTag());
  copy->CopyFrom(this);
  *out = copy.Detach();
}
