#include "zdm/extdata/CZProxyExtDataObj.h"

#include <cstring>
#include <memory>
#include <utility>

ZDM_OBJECT_BODY(CZProxyExtDataObj)

void CZProxyExtDataObj::SetClassID(const GUID* classId) {
  if (classId != nullptr) classId_ = *classId;
}

int CZProxyExtDataObj::GetData(void** out) {
  if (out != nullptr) {
    *out = nullptr;
    if (!bytes_.empty()) {
      *out = CoTaskMemAlloc(bytes_.size());
      if (*out == nullptr) throw CAtlException(E_OUTOFMEMORY);
      std::memcpy(*out, bytes_.data(), bytes_.size());
    }
  }
  return static_cast<int>(bytes_.size());
}

void CZProxyExtDataObj::SetData(const void* data, int length) {
  const auto* first = static_cast<const BYTE*>(data);
  bytes_.assign(first, first + (first != nullptr && length > 0 ? length : 0));
}

void CZProxyExtDataObj::Load(IZStream* stream, IZDatabase* database) {
  const zdm::CustomItemHeader header = zdm::ReadCustomItemHeader(stream);
  bytes_.assign(header.length, 0);
  LoadData(stream, database);
  classId_ = header.classId;
}

void CZProxyExtDataObj::Save(IZStream* stream, IZDatabase* database) {
  zdm::WriteCustomItemHeader(stream, {classId_, static_cast<ULONG>(bytes_.size())});
  SaveData(stream, database);
}

void CZProxyExtDataObj::LoadData(IZStream* stream, IZDatabase*) {
  stream->Read(bytes_.data(), static_cast<ULONG>(bytes_.size()));
}

void CZProxyExtDataObj::SaveData(IZStream* stream, IZDatabase*) {
  stream->Write(bytes_.data(), static_cast<ULONG>(bytes_.size()));
}

void CZProxyExtDataObj::CopyData(IZExtData* source) {
  auto* proxy = zdm::ViewAs<IZProxyExtDataObj>(source);
  if (proxy == nullptr) return;
  void* data = nullptr;
  const int length = proxy->GetData(&data);
  const std::unique_ptr<void, decltype(&CoTaskMemFree)> kept(data, &CoTaskMemFree);
  SetData(data, length);
  SetClassID(proxy->GetClassID());
}
