#pragma once

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/model/IZProxyObjectImpl.h"

#include <algorithm>
#include <cstring>
#include <memory>

template <class P, class T>
void IZProxyObjectImpl<P, T>::CopyFrom(IZDMObject* source, LONG mode) {
  if (source == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  IZDMObjectImpl<T>::CopyFrom(source, mode);
  if (auto* proxy = zdm::ViewAs<IZDMProxyObject>(source)) {
    CopyProxy(*proxy);
    return;
  }
  const ZRefPtr<IZReltnColl> references = zdm::GatherRelations(*source);
  references->Clone(record_.relations.Out(), true);
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::CopyProxy(IZDMProxyObject& source) {
  const auto shared = zdm::NewRelations();
  source.CollectRelations(ZR_ALL, shared);
  ZRefPtr<IZReltnColl> clones;
  if (!shared->IsEmpty()) shared->Clone(clones.Out(), true);

  void* data = nullptr;
  const LONG length = source.GetData(&data);
  const std::unique_ptr<void, void (*)(void*)> freed(data,
                                                     [](void* block) { CoTaskMemFree(block); });
  this->SetData(data, length);
  record_.relations = clones;
  this->SetClassGuid(source.GetClassGuid());
  this->SetModuleGuid(source.GetModuleGuid());
  this->SetFormat(source.GetFormat());
  this->SetWord(source.IsWordSet());
  this->SetKind(source.GetKind());
  // What no operation tells.
  if (const auto* twin = dynamic_cast<const IZProxyObjectImpl*>(&source)) {
    record_.word = twin->record_.word;
    record_.mask = twin->record_.mask;
  }
}

// The header of 33 bytes, see EmbeddedRecord.h; its mask is the option mask.
template <class P, class T>
void IZProxyObjectImpl<P, T>::WriteHeader(IZStream* stream) {
  const zdm::EmbeddedHeader header = {classGuid_, static_cast<LONG>(this->GetID()),
                                      static_cast<LONG>(this->GetOwnerID()), record_.format,
                                      static_cast<ULONGLONG>(this->GetOptionAllowed())};
  zdm::WriteFields(header, [&](const void* data, ULONG length) { stream->Write(data, length); });
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::ReadHeader(IZStream* stream) {
  zdm::EmbeddedHeader header;
  stream->Read(&header, sizeof(header));
  classGuid_ = header.classId;
  record_.format = header.format;
  this->SetOptionAllowed(static_cast<LONGLONG>(header.mask));
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::LoadOwnData(IZStream* stream, IZDatabase*) {
  ReadData(stream, data_.size());
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::SaveOwnData(IZStream* stream, IZDatabase*) {
  stream->Write(data_.data(), static_cast<ULONG>(data_.size()));
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::LoadRawData(IZStream* stream, IZDatabase*) {
  LONG length = 0;
  stream->Read(&length, sizeof(length));
  ReadData(stream, static_cast<std::size_t>(std::max<LONG>(length, 0)));
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::ReadData(IZStream* stream, std::size_t length) {
  if (length > stream->GetBytesLeft()) throw CAtlException(E_FAIL);
  std::vector<BYTE> read(length);
  stream->Read(read.data(), static_cast<ULONG>(length));
  data_.swap(read);
}

template <class P, class T>
LONG IZProxyObjectImpl<P, T>::GetData(void** out) {
  if (data_.empty()) return 0;
  void* copy = CoTaskMemAlloc(data_.size());
  if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
  std::memcpy(copy, data_.data(), data_.size());
  *out = copy;
  return static_cast<LONG>(data_.size());
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::SetData(const void* data, LONG length) {
  std::vector<BYTE> copy;
  const auto* bytes = static_cast<const BYTE*>(data);
  if (bytes != nullptr && length > 0) copy.assign(bytes, bytes + length);
  data_.swap(copy);
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::CollectRelations(eZRelation selector, IZReltnColl* out) {
  if (!record_.IsStored() || record_.relations == nullptr) return;
  for (LONGLONG pos = record_.relations->GetHeadPosition(); pos != 0;) {
    IZRelation* relation = record_.relations->GetNext(pos);
    if (relation == nullptr) continue;
    if (selector == ZR_ALL || (selector == ZR_DIFFUSIBLE && relation->IsReltnDiffusible()) ||
        (selector == ZR_NONDIFFUSIBLE && !relation->IsReltnDiffusible())) {
      out->AddTail(relation);
    }
  }
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::SaveEmbedded(IZStream* stream, IZDatabase* database) {
  if (!record_.IsStored()) return;
  this->SaveModuleGuid(stream);
  this->SaveRelations(stream, database);
  record_.SaveFields(stream);
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::LoadEmbedded(IZStream* stream, IZDatabase* database) {
  if (!record_.IsStored()) return;
  this->LoadModuleGuid(stream);
  this->LoadRelations(stream, database);
  record_.LoadFields(stream);
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::SaveRelations(IZStream* stream, IZDatabase* database) {
  record_.SaveRelations(stream, database);
}

template <class P, class T>
void IZProxyObjectImpl<P, T>::LoadRelations(IZStream* stream, IZDatabase* database) {
  record_.LoadRelations(stream, database);
}

template <class P, class T>
LONG IZProxyObjectImpl<P, T>::GetKindValue(ULONG* out) {
  *out = record_.kind;
  return 0;
}
