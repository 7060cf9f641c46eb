// StgCreateDocfile, StgOpenStorage, StgIsStorageFile.
#include "platform/ole/portable/StorageDoors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "platform/ole/portable/StorageError.h"
#include "platform/ole/portable/StorageMode.h"
#include "platform/ole/portable/StorageObject.h"
#include "platform/ole/portable/StorageTree.h"

namespace zdm {

HRESULT OpenPortableStorage(LPCOLESTR path, DWORD mode, IStorage** out,
                            CompoundFileReport* report) try {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  if (path == nullptr || *path == 0) return STG_E_INVALIDNAME;
  HRESULT result = CheckMode(mode);
  if (FAILED(result) || (mode & STGM_CREATE) != 0) return STG_E_INVALIDFLAG;
  const std::string native = NativePath(path);
  std::shared_ptr<StorageSource> source;
  result = StorageSource::Open(native, &source, report);
  if (FAILED(result)) return result;
  if (IsWritable(mode) && access(native.c_str(), W_OK) != 0) return STG_E_ACCESSDENIED;
  auto tree = std::make_shared<StorageTree>();
  result = tree->Load(source);
  if (FAILED(result)) return result;
  *out = StorageObject::NewRoot(std::move(tree), path, mode);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

namespace {

/// Whether a new file could be put at `path`.
HRESULT CheckTarget(const std::string& path, DWORD mode) {
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) return STG_E_ACCESSDENIED;
    return (mode & STGM_CREATE) != 0 ? S_OK : STG_E_FILEALREADYEXISTS;
  }
  if (errno != ENOENT) return StorageError(errno, path);
  const std::string folder = FolderOf(path);
  if (access(folder.c_str(), F_OK) != 0) return STG_E_PATHNOTFOUND;
  return access(folder.c_str(), W_OK | X_OK) == 0 ? S_OK : STG_E_ACCESSDENIED;
}

}  // namespace

}  // namespace zdm

HRESULT StgCreateDocfile(LPCOLESTR path, DWORD mode, DWORD /*reserved*/, IStorage** out) try {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  if (path != nullptr && *path == 0) return STG_E_INVALIDNAME;
  HRESULT result = zdm::CheckMode(mode);
  if (FAILED(result)) return result;
  if (!zdm::IsWritable(mode)) return STG_E_INVALIDFLAG;
  std::u16string target;
  if (path != nullptr) {
    target = path;
    result = zdm::CheckTarget(zdm::NativePath(path), mode);
    if (FAILED(result)) return result;
  }
  auto tree = std::make_shared<zdm::StorageTree>();
  tree->SetChanged(true);
  *out = zdm::StorageObject::NewRoot(std::move(tree), std::move(target), mode);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT StgOpenStorage(LPCOLESTR path, IStorage* priority, DWORD mode, SNB exclude,
                       DWORD /*reserved*/, IStorage** out) {
  if (priority != nullptr || exclude != nullptr) return STG_E_INVALIDPARAMETER;
  return zdm::OpenPortableStorage(path, mode, out, nullptr);
}

HRESULT StgIsStorageFile(LPCOLESTR path) {
  if (path == nullptr) return STG_E_INVALIDNAME;
  const std::string native = zdm::NativePath(path);
  const int file = open(native.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return zdm::StorageError(errno, native);
  BYTE start[8] = {};
  const ssize_t got = pread(file, start, sizeof(start), 0);
  close(file);
  if (got < 0) return zdm::StorageError(errno, native);
  const zdm::CompoundImage image(start, static_cast<ULONGLONG>(got));
  return image.HasSignature() ? S_OK : S_FALSE;
}
