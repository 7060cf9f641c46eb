// Construction, identity, references and copies of a data-model object.
#pragma once

#include "platform/geometry/GeBox.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/relations/IZReltnVisitor.h"

#include <utility>

template <class T>
IZDMObjectImpl<T>::IZDMObjectImpl() : oid_(OID::Take(new OID)) {
  oid_->Object = this;
  oid_->SetStatus(zdm::kNewObjectBit, 0);
  oid_->OptionAllowed = zdm::kNewObjectOptions;
}

template <class T>
IZDMObjectImpl<T>::~IZDMObjectImpl() {
  OID::GiveUp(std::exchange(oid_, nullptr), this);
  OID::GiveUp(std::exchange(ownerOid_, nullptr), nullptr);
  extDataMgr_.Reset();
  treeData_.Reset();
  HoldParameterArray(nullptr);
  reltnColl_.Reset();
}

template <class T>
IZObject* IZDMObjectImpl<T>::Clone() {
  IZDMObject* copy = nullptr;
  this->CloneInto(&copy, zdm::kCopyMode);
  if (copy == nullptr) return nullptr;
  copy->ForgetReference();
  return copy->GetIZObject();
}

// Display.

template <class T>
void IZDMObjectImpl<T>::DrawVariant1(IZGiDevice* device, SubID* sub, GiContext* context) {
  this->Draw(device, sub, context);
}

template <class T>
void IZDMObjectImpl<T>::DrawVariant2(IZGiDevice* device, SubID* sub, GiContext* context) {
  this->Draw(device, sub, context);
}

template <class T>
void IZDMObjectImpl<T>::DrawVariant3(IZGiDevice* device, SubID* sub, GiContext* context) {
  this->Draw(device, sub, context);
}

template <class T>
void IZDMObjectImpl<T>::DrawVariant4(IZGiDevice* device, SubID* sub, GiContext* context) {
  this->Draw(device, sub, context);
}

template <class T>
void IZDMObjectImpl<T>::DrawVariant5(IZGiDevice* device, SubID* sub, GiContext* context) {
  this->Draw(device, sub, context);
}

template <class T>
void IZDMObjectImpl<T>::Select(IZGiDevice* device) {
  if (device == nullptr) return;
  if (this->JudgeStatus(zdm::kMarkedBit)) {
    device->SelectMarked(this);
  } else {
    device->Select(this);
  }
}

template <class T>
void IZDMObjectImpl<T>::GetBox(double* box, SubID*, GiContext*) {
  GeBox().GetBox(box);
}

template <class T>
bool IZDMObjectImpl<T>::JudgeStatus(LONG bit) {
  return oid_ != nullptr && oid_->JudgeStatus(bit);
}

// Relation.

template <class T>
void IZDMObjectImpl<T>::CopyFrom(IZRelation* other) {
  if (auto* source = zdm::ViewAs<IZDMObject>(other)) this->CopyFrom(source, zdm::kCopyMode);
}

template <class T>
bool IZDMObjectImpl<T>::JudgeReltnStatus(LONG mask) {
  return (reltnStatus_ & static_cast<ULONG>(mask)) == static_cast<ULONG>(mask);
}

template <class T>
void IZDMObjectImpl<T>::SetReltnDiffusible(bool diffusible) {
  if (diffusible) {
    this->SetReltnStatus(ZRS_DIFFUSIBLE);
  } else {
    this->ClearReltnStatus(ZRS_DIFFUSIBLE);
  }
}

template <class T>
bool IZDMObjectImpl<T>::JudgeSame(IZRelation* other) {
  auto* object = zdm::ViewAs<IZDMObject>(other);
  return object != nullptr && this->JudgeSame(object);
}

// Identity and status.

template <class T>
bool IZDMObjectImpl<T>::IsObjectValid() {
  return this->JudgeStatus(ZOS_VALID);
}

template <class T>
bool IZDMObjectImpl<T>::IsObjectAttached() {
  return this->JudgeStatus(ZOS_ATTACHED);
}

template <class T>
void IZDMObjectImpl<T>::SetStatus(LONG bit) {
  if (oid_ != nullptr) oid_->SetStatus(bit, 0);
}

template <class T>
void IZDMObjectImpl<T>::ClearStatus(LONG bit) {
  if (oid_ != nullptr) oid_->ClearStatus(bit, 0);
}

template <class T>
void IZDMObjectImpl<T>::SetObjectValid(bool valid) {
  if (valid) {
    this->SetStatus(ZOS_VALID);
  } else {
    this->ClearStatus(ZOS_VALID);
  }
}

template <class T>
bool IZDMObjectImpl<T>::JudgeSame(IZDMObject* other) {
  if (other == nullptr || oid_ == nullptr) return false;
  return static_cast<CZObject*>(other) == static_cast<CZObject*>(oid_->Object);
}

template <class T>
void IZDMObjectImpl<T>::SetOID(OID* oid, bool raw) {
  zdm::ChangeWatch::Changed(*this);
  if (raw || oid == nullptr) {
    OID::Leave(std::exchange(oid_, OID::Take(oid)));
    return;
  }
  const auto status = oid_ != nullptr ? oid_->Status : decltype(oid->Status)();
  if (oid != oid_) OID::GiveUp(std::exchange(oid_, OID::Take(oid)), this);
  oid_->Object = this;
  oid_->Status = status;
  oid_->NoteOtherObject();
}

template <class T>
void IZDMObjectImpl<T>::SetID(ULONG id) {
  if (oid_ != nullptr) oid_->ID = static_cast<LONG>(id);
  zdm::ChangeWatch::Changed(*this);
}

template <class T>
ULONG IZDMObjectImpl<T>::GetID() {
  return oid_ != nullptr ? static_cast<ULONG>(oid_->ID) : 0;
}

template <class T>
void IZDMObjectImpl<T>::SetOwnerOID(OID* oid) {
  OID::GiveUp(std::exchange(ownerOid_, OID::Take(oid)), nullptr);
}

template <class T>
void IZDMObjectImpl<T>::SetOwnerID(ULONG id) {
  if (ownerOid_ == nullptr) return;
  ownerOid_->ID = static_cast<LONG>(id);
  if (ownerOid_->Object != nullptr) zdm::ChangeWatch::Changed(*ownerOid_->Object);
}

template <class T>
ULONG IZDMObjectImpl<T>::GetOwnerID() {
  return ownerOid_ != nullptr ? static_cast<ULONG>(ownerOid_->ID) : 0;
}

template <class T>
void IZDMObjectImpl<T>::SetOwner(IZDMObject* owner) {
  this->SetOwnerOID(owner != nullptr ? owner->GetOID() : nullptr);
}

template <class T>
IZDMObject* IZDMObjectImpl<T>::GetOwner() {
  return ownerOid_ != nullptr ? ownerOid_->Object : nullptr;
}

template <class T>
IZDatabase* IZDMObjectImpl<T>::GetDatabase() {
  IZDMObject* object = oid_ != nullptr ? oid_->Object : nullptr;
  IZDMObject* owner = object != nullptr ? object->GetOwner() : nullptr;
  if (owner == nullptr) return nullptr;
  // The root owns itself. Any longer ring of owners comes back to `mark`, which moves up after 1,
  // 2, 4, ... steps.
  IZDMObject* mark = object;
  ULONGLONG steps = 0;
  ULONGLONG limit = 1;
  while (owner != nullptr && owner != object) {
    object = owner;
    if (object == mark) return nullptr;
    if (++steps == limit) {
      mark = object;
      steps = 0;
      limit *= 2;
    }
    owner = object->GetOwner();
  }
  return zdm::ViewAs<IZDatabase>(object);
}

template <class T>
bool IZDMObjectImpl<T>::VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) {
  zdm::ChangeWatch::Watch(*this);
  if (visitor->Visit(root, this, ownerOid_)) return true;
  if (paramArray_ != nullptr && paramArray_->Accept(root, this, visitor)) return true;
  return reltnColl_ != nullptr && reltnColl_->Accept(root, this, visitor);
}

// Option mask.

template <class T>
void IZDMObjectImpl<T>::AddOptionAllowed(LONGLONG mask) {
  if (oid_ != nullptr) oid_->AppenOptionAllowed(mask);
}

template <class T>
void IZDMObjectImpl<T>::ClearOptionAllowed(LONGLONG mask) {
  if (oid_ != nullptr) oid_->ClearOptionAllowed(mask);
}

template <class T>
bool IZDMObjectImpl<T>::JudgeOptionAllowed(LONGLONG mask) {
  return oid_ != nullptr && oid_->JudgeOptionAllowed(mask);
}

template <class T>
void IZDMObjectImpl<T>::SetOptionAllowed(LONGLONG mask) {
  if (oid_ != nullptr) oid_->OptionAllowed = mask;
}

template <class T>
LONGLONG IZDMObjectImpl<T>::GetOptionAllowed() {
  return oid_ != nullptr ? oid_->GetOptionAllowed() : 0;
}

// Copying.

// The source is read to its end before anything here goes: it may hang off what goes, and what
// cannot be copied throws.
template <class T>
void IZDMObjectImpl<T>::CopyFrom(IZDMObject* source, LONG) {
  if (source == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  const bool valid = source->IsObjectValid();
  const LONGLONG options = source->GetOptionAllowed();
  const ULONG displayValue = source->GetDisplayValue();
  ZRefPtr<IZExtDataMgr> extData;
  if (IZExtDataMgr* manager = source->GetExtDataMgr()) manager->Clone(extData.Out());
  ZRefPtr<IZReltnColl> relations;
  if (IZReltnColl* coll = source->GetReltnColl()) coll->Clone(relations.Out(), true);
  ZRefPtr<IZParameterArray> parameters;
  if (IZParameterArray* array = source->PeekParameterArray()) array->Clone(parameters.Out());

  if (valid) this->SetStatus(ZOS_VALID);
  if (extData != nullptr) extDataMgr_ = extData;
  this->SetOptionAllowed(options);
  reltnColl_ = relations;
  zdm::ChangeWatch::Changed(*this);
  this->SetParameterArray(parameters, false);
  this->SetDisplayValue(displayValue);
}

template <class T>
void IZDMObjectImpl<T>::CloneInto(IZDMObject** out, LONG) {
  *out = nullptr;
  GUID classId = GUID_NULL;
  if (FAILED(this->GetClassID(&classId))) return;
  ZRefPtr<IZDMObject> copy = zdm::CreateAs<IZDMObject>(classId);
  if (copy == nullptr) return;
  ZCore::GetZFactory()->RegisterCreated(copy, classId);

  copy->SetID(this->GetID());
  copy->CopyFrom(this, zdm::kCopyMode);
  copy->SetOwner(this->GetOwnerID() != 0 ? this->GetOwner() : nullptr);
  copy->GetOID()->Object = copy;
  *out = copy.Detach();
}

template <class T>
void IZDMObjectImpl<T>::CloneRelation(IZRelation** out) {
  *out = nullptr;
  ZRefPtr<IZDMObject> copy;
  this->CloneInto(copy.Out(), zdm::kCopyMode);
  ZRefPtr<IZRelation> view;
  if (copy != nullptr) view.Query(copy);
  *out = view.Detach();
}
