#include "platform/ole/BytesStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>

namespace zdm {

HRESULT BytesStream::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  const bool answers = iid == IID_IUnknown || iid == IID_ISequentialStream || iid == IID_IStream;
  *out = answers ? static_cast<IStream*>(this) : nullptr;
  if (!answers) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT BytesStream::Read(void* data, ULONG length, ULONG* read) {
  const std::size_t left = position < bytes.size() ? bytes.size() - position : 0;
  const std::size_t count = std::min<std::size_t>(left, length);
  if (count != 0) std::memcpy(data, bytes.data() + position, count);
  position += count;
  if (read != nullptr) *read = static_cast<ULONG>(count);
  return count == length ? S_OK : S_FALSE;
}

HRESULT BytesStream::Write(const void* data, ULONG length, ULONG* written) try {
  if (written != nullptr) *written = 0;
  if (ULONGLONG{position} + length > SIZE_MAX / 2) return E_OUTOFMEMORY;
  const auto* from = static_cast<const BYTE*>(data);
  if (position > bytes.size()) bytes.resize(position + length);  // zeros before what is written
  const std::size_t over = std::min<std::size_t>(length, bytes.size() - position);
  bytes.insert(bytes.end(), from + over, from + length);  // first, since it may fail
  if (over != 0) std::memcpy(bytes.data() + position, from, over);
  position += length;
  if (written != nullptr) *written = length;
  return S_OK;
} catch (const std::exception&) {
  return E_OUTOFMEMORY;
}

HRESULT BytesStream::Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* to) {
  const std::size_t from = origin == STREAM_SEEK_SET   ? 0
                           : origin == STREAM_SEEK_CUR ? position
                                                       : bytes.size();
  const LONGLONG target = static_cast<LONGLONG>(from) + offset.QuadPart;
  if (target < 0) return STG_E_INVALIDFUNCTION;
  position = static_cast<std::size_t>(target);
  if (to != nullptr) to->QuadPart = position;
  return S_OK;
}

HRESULT BytesStream::SetSize(ULARGE_INTEGER size) { return Resize(size.QuadPart); }

HRESULT BytesStream::Resize(ULONGLONG size) try {
  if (size > SIZE_MAX / 2) return E_OUTOFMEMORY;
  bytes.resize(static_cast<std::size_t>(size));
  return S_OK;
} catch (const std::exception&) {
  return E_OUTOFMEMORY;
}

HRESULT BytesStream::Stat(STATSTG* stat, DWORD) {
  if (stat == nullptr) return STG_E_INVALIDPOINTER;
  *stat = {};
  stat->type = STGTY_STREAM;
  stat->cbSize.QuadPart = bytes.size();
  return S_OK;
}

HRESULT BytesStream::CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) {
  return E_NOTIMPL;
}

HRESULT BytesStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return E_NOTIMPL; }
HRESULT BytesStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return E_NOTIMPL; }

HRESULT BytesStream::Clone(IStream** out) {
  if (out != nullptr) *out = nullptr;
  return E_NOTIMPL;
}

}  // namespace zdm
