#pragma once

#include <utility>

#include "platform/core/IZStream.h"
#include "platform/geometry/GeBox.h"
#include "platform/ole/Bstr.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/IZExtData.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/relations/IZReltnVisitor.h"

namespace zdm {

/// Loads what an object already has. A trial on a new object of its class comes first, since `held`
/// is emptied before it loads and would lose everything to a damaged stream.
template <class Attachment>
void ReloadHeld(Attachment* held, ZRefPtr<Attachment> trial, IZStream* stream,
                IZDatabase* database) {
  if (trial == nullptr) throw CAtlException(E_FAIL);
  const ULONGLONG start = stream->GetPosition();
  trial->Load(stream, database);
  stream->Seek(static_cast<LONGLONG>(start), STREAM_SEEK_SET);
  held->RemoveAll();
  held->Load(stream, database);
}

}  // namespace zdm

template <class T>
IZDMObjectImpl<T>::IZDMObjectImpl() : oid_(OID::Take(new OID)) {
  oid_->Object = this;
  oid_->SetStatus(zdm::kNewObjectBit, 0);
  oid_->OptionAllowed = zdm::kNewObjectOptions;
}

template <class T>
IZDMObjectImpl<T>::~IZDMObjectImpl() {
  OID::GiveUp(std::exchange(oid_, nullptr), this);
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
  if (raw || oid == nullptr) {
    OID::Leave(std::exchange(oid_, OID::Take(oid)));
    return;
  }
  const auto status = oid_ != nullptr ? oid_->Status : decltype(oid->Status)();
  if (oid != oid_) OID::GiveUp(std::exchange(oid_, OID::Take(oid)), this);
  oid_->Object = this;
  oid_->Status = status;
}

template <class T>
void IZDMObjectImpl<T>::SetID(ULONG id) {
  if (oid_ != nullptr) oid_->ID = static_cast<LONG>(id);
}

template <class T>
ULONG IZDMObjectImpl<T>::GetID() {
  return oid_ != nullptr ? static_cast<ULONG>(oid_->ID) : 0;
}

template <class T>
void IZDMObjectImpl<T>::SetOwnerID(ULONG id) {
  if (ownerOid_ != nullptr) ownerOid_->ID = static_cast<LONG>(id);
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

template <class T>
void IZDMObjectImpl<T>::CopyFrom(IZDMObject* source, LONG) {
  if (source == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  if (source->IsObjectValid()) this->SetStatus(ZOS_VALID);

  if (IZExtDataMgr* manager = source->GetExtDataMgr()) {
    ZRefPtr<IZExtDataMgr> clone;
    manager->Clone(clone.Out());
    extDataMgr_ = clone;
  }

  this->SetOptionAllowed(source->GetOptionAllowed());

  ZRefPtr<IZReltnColl> relations;
  if (IZReltnColl* coll = source->GetReltnColl()) coll->Clone(relations.Out(), true);
  reltnColl_ = relations;

  this->SetParameterArray(source->PeekParameterArray(), true);

  this->SetDisplayValue(source->GetDisplayValue());
}

template <class T>
void IZDMObjectImpl<T>::CloneInto(IZDMObject** out, LONG mode) {
  *out = nullptr;
  GUID classId = GUID_NULL;
  if (FAILED(this->GetClassID(&classId))) return;
  ZRefPtr<IZDMObject> copy = zdm::CreateAs<IZDMObject>(classId);
  if (copy == nullptr) return;
  ZCore::GetZFactory()->RegisterCreated(copy, classId);

  copy->SetID(this->GetID());
  copy->CopyFrom(this, mode);
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

// Attachments.

template <class T>
LONG IZDMObjectImpl<T>::SetExtDataMgr(IZObject* manager) {
  if (manager == nullptr) return E_INVALIDARG;
  extDataMgr_ = manager;
  return S_OK;
}

template <class T>
IZExtData* IZDMObjectImpl<T>::GetExtData(GUID key, const OLECHAR* name) {
  if (name == nullptr || extDataMgr_ == nullptr) return nullptr;
  IZExtDataCollection* items = extDataMgr_->GetCollection(key);
  if (items == nullptr) return nullptr;
  const zdm::Bstr wanted(name);
  for (LONGLONG pos = items->GetHeadPosition(); pos != 0;) {
    IZExtData* item = items->GetNext(pos);
    if (item == nullptr) continue;
    zdm::Bstr found;
    item->GetName(found.Out());
    if (zdm::SameName(found.Get(), wanted.Get())) return item;
  }
  return nullptr;
}

template <class T>
void IZDMObjectImpl<T>::SetExtData(GUID key, IZObject* item) {
  if (item == nullptr) return;
  if (extDataMgr_ == nullptr) {
    extDataMgr_ = zdm::CreateAs<IZExtDataMgr>(zdm::ClassRow<CZExtDataMgr>::kClassID);
  }
  if (extDataMgr_ == nullptr) return;
  if (IZExtDataCollection* items = extDataMgr_->QueryCollection(key)) items->AddTail(item);
}

template <class T>
void IZDMObjectImpl<T>::RemoveExtData(GUID key, IZObject* item) {
  auto* data = zdm::ViewAs<IZExtData>(item);
  if (data == nullptr || extDataMgr_ == nullptr) return;
  if (IZExtDataCollection* items = extDataMgr_->GetCollection(key)) items->RemoveItem(data);
}

template <class T>
void IZDMObjectImpl<T>::AddRelation(IZObject* relation) {
  if (reltnColl_ == nullptr) {
    reltnColl_ = zdm::CreateAs<IZReltnColl>(zdm::ClassRow<CZReltnColl>::kClassID);
  }
  if (reltnColl_ != nullptr) reltnColl_->AddTail(relation);
}

template <class T>
void IZDMObjectImpl<T>::Reserved91(LONG, LONG, IZObject** out) {
  if (out != nullptr) *out = nullptr;
}

template <class T>
IZGiMaterial* IZDMObjectImpl<T>::GetCategoryMaterial() {
  IZCategory* category = this->GetCategory();
  return category != nullptr ? category->GetMaterial() : nullptr;
}

template <class T>
bool IZDMObjectImpl<T>::GetMaterial(const GUID* key, IZGiMaterial** out) {
  *out = nullptr;
  ZRefPtr<IZDMObject> object;
  this->GetParamRelation(key, object.Out());
  ZRefPtr<IZGiMaterial> material;
  if (object != nullptr) material.Query(object);
  if (material != nullptr && material->IsByCategory()) material = this->GetCategoryMaterial();
  *out = material.Detach();
  return true;
}

// Parameters.

/// The array may be shared or may have moved to another object: only our own link is cleared.
template <class T>
void IZDMObjectImpl<T>::HoldParameterArray(IZParameterArray* array) {
  const ZRefPtr<IZParameterArray> former = paramArray_;
  paramArray_ = array;
  if (former != nullptr && former != paramArray_ && former->GetOwner() == this) {
    former->SetOwner(nullptr);
  }
  if (paramArray_ != nullptr) paramArray_->SetOwner(this);
}

/// The array, created when absent; null when it cannot be.
template <class T>
IZParameterArray* IZDMObjectImpl<T>::QueryParameterArray() {
  if (paramArray_ == nullptr) {
    HoldParameterArray(zdm::CreateAs<IZParameterArray>(zdm::ClassRow<CZParameterArray>::kClassID));
  }
  return paramArray_;
}

template <class T>
void IZDMObjectImpl<T>::GetParameterArray(IZParameterArray** out) {
  *out = QueryParameterArray();
  if (*out != nullptr) (*out)->AddRef();
}

template <class T>
void IZDMObjectImpl<T>::SetParameterArray(IZParameterArray* array, bool clone) {
  if (array != nullptr && array == paramArray_) return;
  ZRefPtr<IZParameterArray> taken = array;
  if (array != nullptr && clone) array->Clone(taken.Out());
  HoldParameterArray(taken);
}

template <class T>
IZParameter* IZDMObjectImpl<T>::GetParameter(const GUID& definitionGUID) {
  return paramArray_ != nullptr ? paramArray_->GetParameter(definitionGUID) : nullptr;
}

template <class T>
void IZDMObjectImpl<T>::AddParameter(IZParameter* parameter) {
  if (IZParameterArray* array = QueryParameterArray()) array->Add(parameter, 0);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamDouble(const GUID* definitionGUID, double* out) {
  return paramArray_ != nullptr && paramArray_->GetParamDouble(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamDouble(const GUID* definitionGUID, double value) {
  return paramArray_ != nullptr && paramArray_->SetParamDouble(definitionGUID, value);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamLong(const GUID* definitionGUID, LONG* out) {
  return paramArray_ != nullptr && paramArray_->GetParamLong(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamLong(const GUID* definitionGUID, LONG value) {
  return paramArray_ != nullptr && paramArray_->SetParamLong(definitionGUID, value);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamString(const GUID* definitionGUID, BSTR* out) {
  *out = nullptr;
  return paramArray_ != nullptr && paramArray_->GetParamString(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamString(const GUID* definitionGUID, const OLECHAR* text) {
  return paramArray_ != nullptr && paramArray_->SetParamString(definitionGUID, text);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamValue(const GUID* definitionGUID, ZDfValue** out) {
  *out = nullptr;
  return paramArray_ != nullptr && paramArray_->GetParamValue(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamValue(const GUID* definitionGUID, const ZDfValue* value) {
  return paramArray_ != nullptr && paramArray_->SetParamValue(definitionGUID, value);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamRelation(const GUID* definitionGUID, IZDMObject** out) {
  *out = nullptr;
  return paramArray_ != nullptr && paramArray_->GetParamRelation(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                         bool diffusible) {
  return paramArray_ != nullptr &&
         paramArray_->SetParamRelation(definitionGUID, object, diffusible);
}

template <class T>
bool IZDMObjectImpl<T>::GetParamBool(const GUID* definitionGUID, bool* out) {
  return paramArray_ != nullptr && paramArray_->GetParamBool(definitionGUID, out);
}

template <class T>
bool IZDMObjectImpl<T>::SetParamBool(const GUID* definitionGUID, bool value) {
  return paramArray_ != nullptr && paramArray_->SetParamBool(definitionGUID, value);
}

// An object's record: header, body, tail; an object that is not valid writes nothing.
//   header  41 bytes, see ObjectHeader.h
//   body    see SaveBody
//   tail    empty, unless the class writes one
template <class T>
void IZDMObjectImpl<T>::Save(IZStream* stream, IZDatabase* database) {
  if (!this->IsObjectValid()) return;
  this->SaveHead(stream, database);
  this->SaveBody(stream, database);
  this->SaveTail(stream, database);
}

template <class T>
void IZDMObjectImpl<T>::Load(IZStream* stream, IZDatabase* database) {
  this->LoadHead(stream, database);
  this->LoadBody(stream, database);
  this->LoadTail(stream, database);
}

template <class T>
void IZDMObjectImpl<T>::SaveHead(IZStream* stream, IZDatabase*) {
  this->WriteHeader(stream);
}

template <class T>
void IZDMObjectImpl<T>::LoadHead(IZStream* stream, IZDatabase*) {
  this->ReadHeader(stream);
}

template <class T>
void IZDMObjectImpl<T>::WriteHeader(IZStream* stream) {
  zdm::ObjectHeader header = {};
  GUID classId = GUID_NULL;
  this->GetClassID(&classId);
  header.classId = classId;
  if (oid_ != nullptr) {
    header.auxWord1 = oid_->AuxWord1;
    header.auxWord2 = oid_->AuxWord2;
  }
  header.id = static_cast<LONG>(this->GetID());
  header.ownerId = static_cast<LONG>(this->GetOwnerID());
  header.type = this->GetTypeByte();
  header.options = this->GetOptionAllowed();
  stream->Write(&header, sizeof(header));
}

template <class T>
void IZDMObjectImpl<T>::ReadHeader(IZStream* stream) {
  zdm::ObjectHeader header;
  stream->Read(&header, sizeof(header));
  this->SetOptionAllowed(header.options);
}

// Body.
//   size      field
//      4      length of what follows
//      1      1 when extended data follow, else 0
//   variable  extended data: the manager's record
//      1      1 when relations follow, else 0
//   variable  relation collection record
//      1      1 when parameters follow, else 0
//   variable  parameter array record
//   variable  what the class adds (SaveOwnData)
// The length is patched when the rest is written; the stream is then at its end.
template <class T>
void IZDMObjectImpl<T>::SaveBody(IZStream* stream, IZDatabase* database) {
  ULONG length = 0;
  stream->Write(&length, sizeof(length));
  const ULONGLONG start = stream->GetPosition();

  this->SaveExtData(stream, database);
  const BYTE hasRelations = reltnColl_ != nullptr ? 1 : 0;
  stream->Write(&hasRelations, 1);
  if (hasRelations != 0) reltnColl_->Save(stream, database);
  const BYTE hasParameters = paramArray_ != nullptr ? 1 : 0;
  stream->Write(&hasParameters, 1);
  if (hasParameters != 0) paramArray_->Save(stream, database);
  this->SaveOwnData(stream, database);

  const ULONGLONG written = stream->GetPosition() - start;
  if (written > 0xFFFFFFFF) throw CAtlException(E_FAIL);
  length = static_cast<ULONG>(written);
  stream->Seek(-static_cast<LONGLONG>(written + sizeof(length)), STREAM_SEEK_CUR);
  stream->Write(&length, sizeof(length));
  stream->Seek(0, STREAM_SEEK_END);
}

template <class T>
void IZDMObjectImpl<T>::LoadBody(IZStream* stream, IZDatabase* database) {
  ULONG length;  // for readers that skip the body
  stream->Read(&length, sizeof(length));
  this->LoadExtData(stream, database);
  BYTE flag;
  stream->Read(&flag, 1);
  if (flag == 1) LoadRelations(stream, database);
  stream->Read(&flag, 1);
  if (flag == 1) LoadParameters(stream, database);
  this->LoadOwnData(stream, database);
}

template <class T>
void IZDMObjectImpl<T>::SaveExtData(IZStream* stream, IZDatabase* database) {
  const BYTE flag = extDataMgr_ != nullptr ? 1 : 0;
  stream->Write(&flag, 1);
  if (flag != 0) extDataMgr_->Save(stream, database);
}

template <class T>
void IZDMObjectImpl<T>::LoadExtData(IZStream* stream, IZDatabase* database) {
  BYTE flag;
  stream->Read(&flag, 1);
  if (flag == 0) return;
  auto manager = zdm::CreateAs<IZExtDataMgr>(zdm::ClassRow<CZExtDataMgr>::kClassID);
  if (extDataMgr_ != nullptr) {
    zdm::ReloadHeld<IZExtDataMgr>(extDataMgr_, manager, stream, database);
    return;
  }
  if (manager == nullptr) throw CAtlException(E_FAIL);
  extDataMgr_ = manager;
  manager->Load(stream, database);
}

/// Always into a new collection, since a collection appends what it loads.
template <class T>
void IZDMObjectImpl<T>::LoadRelations(IZStream* stream, IZDatabase* database) {
  auto relations = zdm::CreateAs<IZReltnColl>(zdm::ClassRow<CZReltnColl>::kClassID);
  if (relations == nullptr) throw CAtlException(E_FAIL);
  if (reltnColl_ == nullptr) reltnColl_ = relations;
  relations->Load(stream, database);
  reltnColl_ = relations;
}

template <class T>
void IZDMObjectImpl<T>::LoadParameters(IZStream* stream, IZDatabase* database) {
  if (paramArray_ != nullptr) {
    zdm::ReloadHeld<IZParameterArray>(
        paramArray_, zdm::CreateAs<IZParameterArray>(zdm::ClassRow<CZParameterArray>::kClassID),
        stream, database);
    paramArray_->SetOwner(this);
    return;
  }
  if (QueryParameterArray() == nullptr) throw CAtlException(E_FAIL);
  paramArray_->Load(stream, database);
}
