// StgCreateDocfile, StgOpenStorage, StgIsStorageFile.
#include "platform/ole/portable/StorageDoors.h"

#include "platform/ole/portable/StorageDescriptor.h"
#include "platform/ole/portable/StorageError.h"
#include "platform/ole/portable/StorageMode.h"
#include "platform/ole/portable/StorageObject.h"
#include "platform/ole/portable/StorageSave.h"
#include "platform/ole/portable/StorageTree.h"

#include <fcntl.h>

#include <memory>
#include <new>
#include <string>
#include <utility>

namespace zdm {

HRESULT OpenPortableStorage(LPCOLESTR path, DWORD mode, IStorage** out,
                            CompoundFileReport* report) try {
  if (report != nullptr) *report = {};
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  if (path == nullptr || *path == 0) return STG_E_INVALIDNAME;
  HRESULT result = CheckOpenMode(mode);
  if (FAILED(result)) return result;
  std::string native;
  if (!NativePath(path, &native)) return STG_E_INVALIDNAME;
  std::shared_ptr<StorageSource> source;
  result = StorageSource::Open(native, &source, report);
  if (FAILED(result)) return result;
  StoragePlace place = {path, {}};
  if (IsWritable(mode)) {
    result = ResolveTarget(native, &place.file);
    if (SUCCEEDED(result)) result = CheckTarget(place.file);
    if (FAILED(result)) return result;
  }
  auto tree = std::make_shared<StorageTree>();
  result = tree->Load(source);
  if (FAILED(result)) return result;
  *out = StorageObject::NewRoot(std::move(tree), std::move(place), mode);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

namespace {

HRESULT FindNewPlace(LPCOLESTR path, DWORD mode, StoragePlace* place) {
  std::string native;
  if (*path == 0 || !NativePath(path, &native)) return STG_E_INVALIDNAME;
  place->name = path;
  HRESULT result = ResolveTarget(native, &place->file);
  if (SUCCEEDED(result)) result = CheckTarget(place->file);
  if (FAILED(result)) return result;
  return (mode & STGM_CREATE) == 0 && MayAccess(place->file, F_OK) ? STG_E_FILEALREADYEXISTS : S_OK;
}

}  // namespace

}  // namespace zdm

HRESULT StgCreateDocfile(LPCOLESTR path, DWORD mode, DWORD /*reserved*/, IStorage** out) try {
  if (out == nullptr) return STG_E_INVALIDPOINTER;
  *out = nullptr;
  HRESULT result = zdm::CheckCreateMode(mode);
  if (FAILED(result)) return result;
  zdm::StoragePlace place;
  if (path != nullptr) result = zdm::FindNewPlace(path, mode, &place);
  if (FAILED(result)) return result;
  auto tree = std::make_shared<zdm::StorageTree>();
  tree->MarkNew();
  *out = zdm::StorageObject::NewRoot(std::move(tree), std::move(place), mode);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT StgOpenStorage(LPCOLESTR path, IStorage* priority, DWORD mode, SNB exclude,
                       DWORD /*reserved*/, IStorage** out) {
  if (out != nullptr) *out = nullptr;
  if (priority != nullptr || exclude != nullptr) return STG_E_INVALIDPARAMETER;
  return zdm::OpenPortableStorage(path, mode, out, nullptr);
}

HRESULT StgIsStorageFile(LPCOLESTR path) try {
  std::string native;
  if (path == nullptr || !zdm::NativePath(path, &native)) return STG_E_INVALIDNAME;
  zdm::StorageDescriptor file;
  if (const int error = file.Open(native, O_RDONLY)) return zdm::StorageError(error, native);
  BYTE start[8];
  if (!file.ReadAt(0, start, sizeof(start))) return S_FALSE;
  return zdm::CompoundImage(zdm::CompoundMemory(start, sizeof(start))).HasSignature() ? S_OK
                                                                                      : S_FALSE;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
