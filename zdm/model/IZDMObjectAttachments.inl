// Attachments of a data-model object: extended data, relations, parameters, materials.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/IZExtData.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameter.h"

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
    extDataMgr_ = zdm::CreateAs<IZExtDataMgr, CZExtDataMgr>();
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

/// Among its own relations an object would never be released, and copying it would not end.
template <class T>
void IZDMObjectImpl<T>::AddRelation(IZObject* relation) {
  if (static_cast<CZObject*>(relation) == static_cast<CZObject*>(this)) return;
  if (reltnColl_ == nullptr) {
    reltnColl_ = zdm::CreateAs<IZReltnColl, CZReltnColl>();
    zdm::ChangeWatch::Changed(*this);
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
  zdm::ChangeWatch::Changed(*this);
}

/// The array, created when absent; null when it cannot be.
template <class T>
IZParameterArray* IZDMObjectImpl<T>::QueryParameterArray() {
  if (paramArray_ == nullptr) {
    HoldParameterArray(zdm::CreateAs<IZParameterArray, CZParameterArray>());
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
