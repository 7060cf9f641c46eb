#include "platform/ole/portable/ContentStream.h"

#include "platform/ole/portable/StorageMode.h"
#include "platform/ole/portable/TaskMemory.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zdm {

HRESULT StartStat(STATSTG* stat, DWORD flags, const std::u16string* name) {
  if (stat == nullptr) return STG_E_INVALIDPOINTER;
  *stat = {};
  if (name == nullptr || (flags & STATFLAG_NONAME) != 0) return S_OK;
  const std::size_t bytes = (name->size() + 1) * sizeof(OLECHAR);
  stat->pwcsName = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
  if (stat->pwcsName == nullptr) return E_OUTOFMEMORY;
  std::memcpy(stat->pwcsName, name->c_str(), bytes);
  return S_OK;
}

HRESULT MovePosition(ULONGLONG base, LONGLONG move, ULONGLONG* position) {
  const ULONGLONG moved = base + static_cast<ULONGLONG>(move);
  const bool wrapped = move < 0 ? moved > base : moved < base;
  if (wrapped || moved > static_cast<ULONGLONG>(INT64_MAX)) return STG_E_INVALIDFUNCTION;
  *position = moved;
  return S_OK;
}

HRESULT CopyBytes(IStream* source, IStream* target, ULONGLONG size, ULARGE_INTEGER* read,
                  ULARGE_INTEGER* written) try {
  constexpr ULONGLONG kPiece = ULONGLONG{256} << 10;
  std::vector<BYTE> buffer(static_cast<std::size_t>(std::min(size, kPiece)));
  ULONGLONG readSum = 0;
  ULONGLONG writtenSum = 0;
  HRESULT result = S_OK;
  while (readSum < size) {
    ULONG got = 0;
    ULONG put = 0;
    result =
        source->Read(buffer.data(), static_cast<ULONG>(std::min(size - readSum, kPiece)), &got);
    readSum += got;
    if (FAILED(result) || got == 0) break;
    result = target->Write(buffer.data(), got, &put);
    writtenSum += put;
    if (FAILED(result)) break;
    if (put < got) {
      result = STG_E_MEDIUMFULL;
      break;
    }
  }
  if (read != nullptr) read->QuadPart = readSum;
  if (written != nullptr) written->QuadPart = writtenSum;
  return FAILED(result) ? result : S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT ContentStream::Read(void* data, ULONG size, ULONG* read) try {
  if (read != nullptr) *read = 0;
  if (data == nullptr) return STG_E_INVALIDPOINTER;
  StreamContent* content = nullptr;
  HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  if ((mode_ & kModeAccess) == STGM_WRITE) return STG_E_ACCESSDENIED;
  std::size_t got = 0;
  result = content->Read(position_, data, size, &got);
  position_ += got;
  if (read != nullptr) *read = static_cast<ULONG>(got);
  return result;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT ContentStream::Write(const void* data, ULONG size, ULONG* written) try {
  if (written != nullptr) *written = 0;
  if (data == nullptr) return STG_E_INVALIDPOINTER;
  StreamContent* content = nullptr;
  HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  if ((mode_ & kModeAccess) == STGM_READ) return STG_E_ACCESSDENIED;
  if (size == 0) return S_OK;
  NoteChange();
  result = content->Write(position_, data, size);
  if (FAILED(result)) return result;
  position_ += size;
  if (written != nullptr) *written = size;
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT ContentStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
  StreamContent* content = nullptr;
  HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  ULONGLONG base = 0;
  switch (origin) {
    case STREAM_SEEK_SET:
      break;
    case STREAM_SEEK_CUR:
      base = position_;
      break;
    case STREAM_SEEK_END:
      base = content->Size();
      break;
    default:
      return STG_E_INVALIDFUNCTION;
  }
  result = MovePosition(base, move.QuadPart, &position_);
  if (position != nullptr) position->QuadPart = position_;
  return result;
}

HRESULT ContentStream::SetSize(ULARGE_INTEGER size) try {
  StreamContent* content = nullptr;
  const HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  if ((mode_ & kModeAccess) == STGM_READ) return STG_E_ACCESSDENIED;
  NoteChange();
  return content->SetSize(size.QuadPart);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT ContentStream::CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                              ULARGE_INTEGER* written) {
  if (target == nullptr) return STG_E_INVALIDPOINTER;
  StreamContent* content = nullptr;
  const HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  // What is there now: the target may be a clone that lengthens this stream.
  const ULONGLONG left = position_ < content->Size() ? content->Size() - position_ : 0;
  return CopyBytes(this, target, std::min(size.QuadPart, left), read, written);
}

HRESULT ContentStream::Commit(DWORD /*flags*/) {
  StreamContent* content = nullptr;
  return GetContent(&content);
}

HRESULT ContentStream::Revert() {
  StreamContent* content = nullptr;
  return GetContent(&content);
}

HRESULT ContentStream::LockRegion(ULARGE_INTEGER /*offset*/, ULARGE_INTEGER /*size*/,
                                  DWORD /*type*/) {
  return STG_E_INVALIDFUNCTION;
}

HRESULT ContentStream::UnlockRegion(ULARGE_INTEGER /*offset*/, ULARGE_INTEGER /*size*/,
                                    DWORD /*type*/) {
  return STG_E_INVALIDFUNCTION;
}

HRESULT ContentStream::Stat(STATSTG* stat, DWORD flags) {
  StreamContent* content = nullptr;
  HRESULT result = GetContent(&content);
  if (FAILED(result)) return result;
  result = StartStat(stat, flags, Name());
  if (FAILED(result)) return result;
  stat->type = STGTY_STREAM;
  stat->cbSize.QuadPart = content->Size();
  stat->grfMode = mode_;
  return S_OK;
}

}  // namespace zdm
