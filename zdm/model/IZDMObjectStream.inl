// The stored form of a data-model object.
#pragma once

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/module/ClassTable.h"

namespace zdm {

/// Loads what an object already has; held, since the object may let go of it while it is emptied.
/// A trial on a new object of its class comes first, as a damaged stream would otherwise leave
/// nothing of what it was.
template <class Attachment>
void ReloadHeld(const ZRefPtr<Attachment>& trial, const ZRefPtr<Attachment> held, IZStream* stream,
                IZDatabase* database) {
  if (trial == nullptr) throw CAtlException(E_FAIL);
  const ULONGLONG start = stream->GetPosition();
  trial->Load(stream, database);
  stream->Seek(static_cast<LONGLONG>(start), STREAM_SEEK_SET);
  held->RemoveAll();
  held->Load(stream, database);
}

}  // namespace zdm

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
  LoadAttachments(stream, database);
  this->LoadOwnData(stream, database);
}

template <class T>
void IZDMObjectImpl<T>::LoadAttachments(IZStream* stream, IZDatabase* database) {
  this->LoadExtData(stream, database);
  BYTE flag;
  stream->Read(&flag, 1);
  if (flag == 1) LoadRelations(stream, database);
  stream->Read(&flag, 1);
  if (flag == 1) LoadParameters(stream, database);
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
  auto manager = zdm::CreateAs<IZExtDataMgr, CZExtDataMgr>();
  if (extDataMgr_ != nullptr) {
    zdm::ReloadHeld<IZExtDataMgr>(manager, extDataMgr_, stream, database);
    return;
  }
  if (manager == nullptr) throw CAtlException(E_FAIL);
  extDataMgr_ = manager;
  manager->Load(stream, database);
}

/// Always into a new collection, since a collection appends what it loads.
template <class T>
void IZDMObjectImpl<T>::LoadRelations(IZStream* stream, IZDatabase* database) {
  auto relations = zdm::CreateAs<IZReltnColl, CZReltnColl>();
  if (relations == nullptr) throw CAtlException(E_FAIL);
  if (reltnColl_ == nullptr) reltnColl_ = relations;
  relations->Load(stream, database);
  reltnColl_ = relations;
  zdm::ChangeWatch::Changed(*this);
}

template <class T>
void IZDMObjectImpl<T>::LoadParameters(IZStream* stream, IZDatabase* database) {
  if (paramArray_ != nullptr) {
    zdm::ReloadHeld<IZParameterArray>(zdm::CreateAs<IZParameterArray, CZParameterArray>(),
                                      paramArray_, stream, database);
    HoldParameterArray(paramArray_);
    return;
  }
  if (QueryParameterArray() == nullptr) throw CAtlException(E_FAIL);
  paramArray_->Load(stream, database);
}
