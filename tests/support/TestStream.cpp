#include "tests/support/TestStream.h"

#include <algorithm>
#include <cstring>

namespace zdm::test {

bool TestStream::Fails() { return failAfter >= 0 && calls++ >= failAfter; }

HRESULT TestStream::QueryInterface(REFIID, void** out) {
  *out = nullptr;
  return E_NOINTERFACE;
}

ULONG TestStream::AddRef() { return static_cast<ULONG>(++references); }
ULONG TestStream::Release() {
  if (--references == 0) ++timesDropped;
  return static_cast<ULONG>(references);
}

HRESULT TestStream::Read(void* data, ULONG length, ULONG* read) {
  if (read != nullptr) *read = 0;
  if (Fails()) return failure;
  const std::size_t left = position < bytes.size() ? bytes.size() - position : 0;
  const std::size_t count = std::min<std::size_t>(left, length);
  if (count != 0) std::memcpy(data, bytes.data() + position, count);
  position += count;
  if (read != nullptr) *read = static_cast<ULONG>(count);
  return count == length ? S_OK : S_FALSE;
}

HRESULT TestStream::Write(const void* data, ULONG length, ULONG* written) {
  if (written != nullptr) *written = 0;
  const bool fails = Fails();
  const std::size_t fits = position < room ? room - position : 0;
  const std::size_t count = std::min<std::size_t>(fits, fails ? writtenOnFailure : length);
  if (count != 0) {
    bytes.resize(std::max(bytes.size(), position + count));
    std::memcpy(bytes.data() + position, data, count);
  }
  position += count;
  if (fails) return failure;
  if (written != nullptr) *written = static_cast<ULONG>(count);
  return S_OK;
}

HRESULT TestStream::Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* to) {
  const LONGLONG from = origin == STREAM_SEEK_SET   ? 0
                        : origin == STREAM_SEEK_CUR ? static_cast<LONGLONG>(position)
                                                    : static_cast<LONGLONG>(bytes.size());
  if (from + offset.QuadPart < 0) return E_INVALIDARG;
  position = static_cast<std::size_t>(from + offset.QuadPart);
  if (to != nullptr) to->QuadPart = position;
  return S_OK;
}

HRESULT TestStream::SetSize(ULARGE_INTEGER size) {
  bytes.resize(static_cast<std::size_t>(size.QuadPart));
  return S_OK;
}

HRESULT TestStream::CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) {
  return E_NOTIMPL;
}
HRESULT TestStream::Commit(DWORD) { return S_OK; }
HRESULT TestStream::Revert() { return E_NOTIMPL; }
HRESULT TestStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return E_NOTIMPL; }
HRESULT TestStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return E_NOTIMPL; }

HRESULT TestStream::Stat(STATSTG* stat, DWORD) {
  if (!tellsSize) return E_NOTIMPL;
  *stat = {};
  stat->type = STGTY_STREAM;
  stat->cbSize.QuadPart = bytes.size();
  return S_OK;
}

HRESULT TestStream::Clone(IStream** out) {
  *out = nullptr;
  return E_NOTIMPL;
}

}  // namespace zdm::test
