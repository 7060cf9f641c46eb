#pragma once

#include "zdm/extdata/CustomItemHeader.h"
#include "zdm/framework/LoadDepth.h"

template <class T>
void IZExtDataObjImpl<T>::CopyFrom(IZExtData* source) {
  if (source == nullptr || source == static_cast<IZExtData*>(this)) return;
  zdm::Bstr name;
  source->GetName(name.Out());
  this->SetName(name.Get());
  this->CopyData(source);
}

// Custom item record: CustomItemHeader, then as many bytes of data as it says. The length is
// patched when the data are written.
template <class T>
void IZExtDataObjImpl<T>::Save(IZStream* stream, IZDatabase* database) {
  const zdm::LoadDepth nested;  // as deep as it can be read
  zdm::CustomItemHeader header = {};
  this->GetClassID(&header.classId);
  zdm::WriteCustomItemHeader(stream, header);
  const ULONGLONG start = stream->GetPosition();

  this->SaveData(stream, database);

  const ULONGLONG written = stream->GetPosition() - start;
  if (written > zdm::kMaxCustomLength) throw CAtlException(E_FAIL);
  const auto length = static_cast<ULONG>(written);
  stream->Seek(-static_cast<LONGLONG>(written + sizeof(length)), STREAM_SEEK_CUR);
  stream->Write(&length, sizeof(length));
  stream->Seek(0, STREAM_SEEK_END);
}

template <class T>
void IZExtDataObjImpl<T>::Load(IZStream* stream, IZDatabase* database) {
  const zdm::LoadDepth nested;
  const ULONG length = zdm::ReadCustomItemHeader(stream).length;
  const ULONGLONG end = stream->GetPosition() + length;
  this->LoadData(stream, database);
  if (stream->GetPosition() > end) throw CAtlException(E_FAIL);
  stream->Seek(static_cast<LONGLONG>(end), STREAM_SEEK_SET);
}
