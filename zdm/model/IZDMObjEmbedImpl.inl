#pragma once

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/model/IZDMObjEmbedImpl.h"

template <class T>
void IZDMObjEmbedImpl<T>::Update(IZUpdater* updater, GiContext* context) {
  if (ext_ != nullptr) ext_->Update(updater, context);
}

template <class T>
void IZDMObjEmbedImpl<T>::AssertValid(IZDatabase* database) {
  if (ext_ == nullptr) return;  // what is stored is then all that is known
  ext_->AssertValid(database);
  if (record_.relations == nullptr) return;
  const ZRefPtr<IZReltnColl> references = zdm::GatherRelations(*this);
  if (!AreStored(*references)) record_.relations = references;
}

template <class T>
bool IZDMObjEmbedImpl<T>::JudgeStoredRelations() {
  return record_.relations == nullptr || AreStored(*zdm::GatherRelations(*this));
}

template <class T>
bool IZDMObjEmbedImpl<T>::AreStored(IZReltnColl& references) {
  return references.GetCount() == record_.relations->GetCount() &&
         references.JudgeSame(record_.relations);
}

namespace zdm {

/// The extension of `object`: the object itself, or what an embedded one holds.
template <class T>
ZRefPtr<IZDMObjExt> ExtensionOf(IZDMObject* object) {
  ZRefPtr<IZDMObjExt> ext = ViewAs<IZDMObjExt>(object);
  if (ext != nullptr) return ext;
  if (auto* embedded = dynamic_cast<IZDMObjEmbedImpl<T>*>(object)) embedded->GetExt(ext.Out());
  return ext;
}

}  // namespace zdm

template <class T>
void IZDMObjEmbedImpl<T>::CopyFrom(IZDMObject* source, LONG mode) {
  if (source == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  IZDMObjectImpl<T>::CopyFrom(source, mode);
  if (ext_ != nullptr) ext_->CopyFrom(zdm::ExtensionOf<T>(source));
}

template <class T>
bool IZDMObjEmbedImpl<T>::JudgeSame(IZDMObject* other) {
  if (ext_ == nullptr) return false;
  const ZRefPtr<IZDMObjExt> theirs = zdm::ExtensionOf<T>(other);
  return theirs != nullptr && ext_->JudgeSame(theirs);
}

template <class T>
bool IZDMObjEmbedImpl<T>::VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) {
  zdm::ChangeWatch::Watch(*this);
  if (ext_ != nullptr) ext_->VisitReferences(root, this, visitor);
  return false;
}

template <class T>
bool IZDMObjEmbedImpl<T>::JudgeOptionAllowed(LONGLONG mask) {
  return (record_.mask & static_cast<ULONGLONG>(mask)) == static_cast<ULONGLONG>(mask);
}

template <class T>
void IZDMObjEmbedImpl<T>::LoadOwnData(IZStream* stream, IZDatabase* database) {
  if (ext_ != nullptr) ext_->LoadData(stream, database);
}

template <class T>
void IZDMObjEmbedImpl<T>::SaveOwnData(IZStream* stream, IZDatabase* database) {
  if (ext_ != nullptr) ext_->SaveData(stream, database);
}

template <class T>
void IZDMObjEmbedImpl<T>::ReadHeader(IZStream* stream) {
  zdm::EmbeddedHeader header;
  stream->Read(&header, sizeof(header));
  record_.format = header.format;
  record_.mask = header.mask;
}

template <class T>
void IZDMObjEmbedImpl<T>::SaveEmbedded(IZStream* stream, IZDatabase* database) {
  if (!record_.IsStored()) return;
  this->SaveModuleGuid(stream);
  this->SaveRelations(stream, database);
  record_.SaveFields(stream);
}

template <class T>
void IZDMObjEmbedImpl<T>::LoadEmbedded(IZStream* stream, IZDatabase* database) {
  if (!record_.IsStored()) return;
  this->LoadModuleGuid(stream);
  this->LoadRelations(stream, database);
  record_.LoadFields(stream);
}

template <class T>
void IZDMObjEmbedImpl<T>::SaveRelations(IZStream* stream, IZDatabase* database) {
  record_.relations = zdm::GatherRelations(*this);
  record_.SaveRelations(stream, database);
}

template <class T>
void IZDMObjEmbedImpl<T>::LoadRelations(IZStream* stream, IZDatabase* database) {
  record_.LoadRelations(stream, database);
}

template <class T>
LONG IZDMObjEmbedImpl<T>::SetExt(IZDMObjExt* ext) {
  ext_ = ext;
  zdm::ChangeWatch::Changed(*this);
  return 0;
}

template <class T>
LONG IZDMObjEmbedImpl<T>::GetExt(IZDMObjExt** out) {
  *out = ZRefPtr<IZDMObjExt>(ext_).Detach();
  return 0;
}

template <class T>
void IZDMObjEmbedImpl<T>::WriteHeaderTo(IStream* stream) {
  GUID classId = GUID_NULL;
  this->GetClassID(&classId);
  const zdm::EmbeddedHeader header = {classId, static_cast<LONG>(this->GetID()),
                                      static_cast<LONG>(this->GetOwnerID()), record_.format,
                                      record_.mask};
  zdm::WriteFields(header, [&](const void* data, ULONG length) {
    ULONG written = 0;
    const HRESULT result = stream->Write(data, length, &written);
    if (FAILED(result)) throw CAtlException(result);
    if (written != length) throw CAtlException(STG_E_MEDIUMFULL);
  });
}

template <class T>
ULONGLONG IZDMObjEmbedImpl<T>::GetMask(ULONGLONG* out) {
  if (out != nullptr) *out = record_.mask;
  return record_.mask;
}
