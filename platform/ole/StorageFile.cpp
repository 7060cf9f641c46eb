#include "platform/ole/StorageFile.h"

#include <algorithm>

#if !defined(_WIN32)
#include "platform/ole/portable/StorageDoors.h"
#endif

namespace zdm {

#if defined(_WIN32)

namespace {

/// Closes what it holds.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (IsValid()) CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool IsValid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

HRESULT LastError() {
  switch (GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
      return STG_E_FILENOTFOUND;
    case ERROR_PATH_NOT_FOUND:
      return STG_E_PATHNOTFOUND;
    case ERROR_SHARING_VIOLATION:
      return STG_E_SHAREVIOLATION;
    case ERROR_LOCK_VIOLATION:
      return STG_E_LOCKVIOLATION;
    case ERROR_INVALID_NAME:
      return STG_E_INVALIDNAME;
    case ERROR_NOT_ENOUGH_MEMORY:
      return STG_E_INSUFFICIENTMEMORY;
    default:
      return STG_E_ACCESSDENIED;
  }
}

/// The bytes of an open file, read without a mapping: a file that is cut meanwhile must not crash.
class FileBytes final : public CompoundBytes {
 public:
  FileBytes(HANDLE file, ULONGLONG size) : file_(file), size_(size) {}

  ULONGLONG Size() const override { return size_; }
  bool Read(ULONGLONG place, void* data, std::size_t size) const override {
    auto* to = static_cast<BYTE*>(data);
    while (size != 0) {
      OVERLAPPED where = {};
      where.Offset = static_cast<DWORD>(place);
      where.OffsetHigh = static_cast<DWORD>(place >> 32);
      DWORD got = 0;
      const auto wanted = static_cast<DWORD>(std::min<std::size_t>(size, 1 << 20));
      if (ReadFile(file_, to, wanted, &got, &where) == 0 || got == 0) return false;
      to += got;
      place += got;
      size -= got;
    }
    return true;
  }

 private:
  HANDLE file_;
  ULONGLONG size_;
};

HRESULT CheckFile(LPCOLESTR path, CompoundFileReport* report) {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle file(CreateFileW(path, GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file.IsValid()) return LastError();
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) return STG_E_ACCESSDENIED;
  LARGE_INTEGER size = {};
  if (GetFileSizeEx(file.Get(), &size) == 0) return LastError();
  return CheckCompoundFile(FileBytes(file.Get(), static_cast<ULONGLONG>(size.QuadPart)), report);
}

}  // namespace

HRESULT OpenStorage(LPCOLESTR path, DWORD mode, IStorage** out, CompoundFileReport* report) {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  if (report != nullptr) *report = {};
  if (path == nullptr || *path == 0) return STG_E_INVALIDNAME;
  const HRESULT result = CheckFile(path, report);
  if (FAILED(result)) return result == STG_E_INVALIDHEADER ? STG_E_FILEALREADYEXISTS : result;
  return StgOpenStorage(path, nullptr, mode, nullptr, 0, out);
}

#else

HRESULT OpenStorage(LPCOLESTR path, DWORD mode, IStorage** out, CompoundFileReport* report) {
  return OpenPortableStorage(path, mode, out, report);
}

#endif

HRESULT CreateStorage(LPCOLESTR path, DWORD mode, IStorage** out) {
  return StgCreateDocfile(path, mode, 0, out);
}

}  // namespace zdm
