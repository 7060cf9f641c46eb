#include "platform/ole/StorageReplace.h"

#include "platform/ole/OleRef.h"
#include "platform/ole/StorageFile.h"

#include <string>

namespace zdm {

namespace {

constexpr DWORD kMode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

HRESULT Fill(LPCOLESTR path, DWORD mode, const std::function<HRESULT(IStorage*)>& fill) {
  OleRef<IStorage> storage;
  HRESULT result = CreateStorage(path, mode, storage.Out());
  if (SUCCEEDED(result)) result = fill(storage.Get());
  if (SUCCEEDED(result)) result = storage->Commit(STGC_DEFAULT);
  return result;
}

#if defined(_WIN32)

/// The results of storages have the numbers of the system's errors.
HRESULT LastError() { return MAKE_SCODE(SEVERITY_ERROR, FACILITY_STORAGE, GetLastError()); }

/// A name beside `path`, deleted again unless it was put in its place.
class NewFile {
 public:
  explicit NewFile(const std::wstring& path) {
    static volatile LONG counter = 0;
    const std::size_t slash = path.find_last_of(L"\\/:");
    path_ = slash == std::wstring::npos ? std::wstring() : path.substr(0, slash + 1);
    path_ += L"~zdm" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(InterlockedIncrement(&counter)) + L".tmp";
  }
  ~NewFile() {
    if (!path_.empty()) DeleteFileW(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const wchar_t* Path() const { return path_.c_str(); }
  bool HasFolder() const {
    const std::size_t slash = path_.find_last_of(L"\\/:");
    if (slash == std::wstring::npos) return true;
    const DWORD attributes = GetFileAttributesW(path_.substr(0, slash + 1).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }
  HRESULT Flush() const {
    HANDLE file =
        CreateFileW(Path(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastError();
    const HRESULT result = FlushFileBuffers(file) != 0 ? S_OK : LastError();
    CloseHandle(file);
    return result;
  }
  HRESULT PlaceAt(const wchar_t* path) {
    const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (MoveFileExW(Path(), path, how) == 0) return LastError();
    path_.clear();
    return S_OK;
  }

 private:
  std::wstring path_;
};

#endif

}  // namespace

#if defined(_WIN32)

HRESULT ReplaceStorage(LPCOLESTR path, const std::function<HRESULT(IStorage*)>& fill) {
  if (path == nullptr || *path == 0) return STG_E_INVALIDNAME;
  const DWORD attributes = GetFileAttributesW(path);
  const DWORD refused = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & refused) != 0) {
    return STG_E_ACCESSDENIED;
  }
  NewFile file(path);
  if (!file.HasFolder()) return STG_E_PATHNOTFOUND;
  HRESULT result = Fill(file.Path(), kMode, fill);
  if (SUCCEEDED(result)) result = file.Flush();
  if (SUCCEEDED(result)) result = file.PlaceAt(path);
  return result;
}

#else

// The portable storage writes a new file, flushes and renames it when it is committed, and nothing
// otherwise when it is transacted.
HRESULT ReplaceStorage(LPCOLESTR path, const std::function<HRESULT(IStorage*)>& fill) {
  if (path == nullptr || *path == 0) return STG_E_INVALIDNAME;
  return Fill(path, kMode | STGM_TRANSACTED, fill);
}

#endif

}  // namespace zdm
