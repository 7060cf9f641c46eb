#pragma once

#include "platform/core/IZStream.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/relations/IZReltnVisitor.h"

template <class T>
void IZSingleReltnImpl<T>::CopyFrom(IZRelation* other) {
  if (other == nullptr) {
    this->SetReltnObj(nullptr);
    return;
  }
  IZRelationImpl<T>::CopyFrom(other);
  auto* source = zdm::ViewAs<IZSingleReltn>(other);
  PointAt(source != nullptr ? source->GetReltnOID() : nullptr);
}

// Single-target relation record, 16 bytes, little-endian.
//   offset  size  field
//        0    12  relation record (IZRelationImpl)
//       12     4  ID of the target, 0 for none
template <class T>
void IZSingleReltnImpl<T>::Save(IZStream* stream, IZDatabase*) {
  // In two words: the stream copies sixteen bytes at once, which waits for fields stored singly.
  const auto id = static_cast<ULONG>(target_ != nullptr ? target_->ID : 0);
  const ULONGLONG record[2] = {this->status_ | ULONGLONG{static_cast<ULONG>(this->tag_)} << 32,
                               this->spare_ | ULONGLONG{id} << 32};
  stream->Write(record, sizeof(record));
}

template <class T>
void IZSingleReltnImpl<T>::Load(IZStream* stream, IZDatabase* database) {
  LONG record[4];
  stream->Read(record, sizeof(record));
  this->TakeStatus(static_cast<ULONG>(record[0]));
  this->tag_ = record[1];
  this->spare_ = static_cast<ULONG>(record[2]);
  const LONG id = record[3];
  PointAt(id != 0 && database != nullptr ? database->GetOIDByID(id) : nullptr);
}

template <class T>
bool IZSingleReltnImpl<T>::IsValid() {
  return this->JudgeReltnStatus(ZRS_VALID) && target_ != nullptr && target_->JudgeStatus(ZOS_VALID);
}

template <class T>
bool IZSingleReltnImpl<T>::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  return OfferTarget(root, owner, this, visitor);
}

template <class T>
bool IZSingleReltnImpl<T>::OfferTarget(IZDMObject* root, IZDMObject* owner, IZRelation* reltn,
                                       IZReltnVisitor* visitor) {
  zdm::ChangeWatch::Watch(*this);
  const OID* const target = target_;
  if (target == nullptr) return false;
  const bool isDone = visitor->MapOID(root, owner, reltn, &target_);
  if (target_ != target) zdm::ChangeWatch::Changed(*this);
  return isDone;
}

template <class T>
bool IZSingleReltnImpl<T>::JudgeSame(IZRelation* other) {
  if (!IZRelationImpl<T>::JudgeSame(other)) return false;
  auto* single = zdm::ViewAs<IZSingleReltn>(other);
  return single != nullptr && single->GetReltnOID() == target_;
}

template <class T>
void IZSingleReltnImpl<T>::SetReltnObj(IZObject* object) {
  auto* view = zdm::ViewAs<IZDMObject>(object);
  if (view != nullptr && target_ != nullptr && target_->Object == view) return;
  PointAt(view != nullptr ? view->GetOID() : nullptr);
}

template <class T>
IZDMObject* IZSingleReltnImpl<T>::GetReltnObject() {
  return target_ != nullptr ? target_->Object : nullptr;
}

template <class T>
IZDMObject* IZSingleReltnImpl<T>::GetValidReltnObject() {
  IZDMObject* object = this->GetReltnObject();
  if (object == nullptr || !this->JudgeReltnStatus(ZRS_VALID)) return nullptr;
  const OID* own = object->GetOID();
  return own != nullptr && own->JudgeStatus(ZOS_VALID) ? object : nullptr;
}

template <class T>
void IZSingleReltnImpl<T>::Clone(IZSingleReltn** out) {
  *out = nullptr;
  ZRefPtr<IZRelation> copy;
  this->Clone(copy.Out());
  ZRefPtr<IZSingleReltn> single;
  if (copy != nullptr) single.Query(copy);
  *out = single.Detach();
}
