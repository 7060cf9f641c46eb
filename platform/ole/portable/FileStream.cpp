// SHCreateStreamOnFileEx: a stream over a file.
#include "platform/ole/portable/ContentStream.h"
#include "platform/ole/portable/StorageDescriptor.h"
#include "platform/ole/portable/StorageError.h"
#include "platform/ole/portable/StorageMode.h"
#include "platform/system/Text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string>
#include <utility>

namespace zdm {

namespace {

/// The system's results here are those of its file operations.
HRESULT FileError(int error) {
  switch (error) {
    case ENOENT:
      return Result(0x80070002);
    case ENOTDIR:
      return Result(0x80070003);
    case EEXIST:
      return Result(0x80070050);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return Result(0x80070070);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ENXIO:  // a pipe without its other end, a socket
      return E_ACCESSDENIED;
    default:
      return E_FAIL;
  }
}

class FileStream final : public CountedStorage<IStream> {
 public:
  FileStream(StorageDescriptor file, DWORD mode, LPCOLESTR path)
      : file_(std::move(file)), mode_(mode), path_(path) {}

  HRESULT STDMETHODCALLTYPE Read(void* data, ULONG size, ULONG* read) override {
    if (read != nullptr) *read = 0;
    if ((mode_ & kModeAccess) == STGM_WRITE) return STG_E_ACCESSDENIED;
    auto* to = static_cast<char*>(data);
    ULONG sum = 0;
    while (sum < size) {
      const ssize_t got = pread(file_.Get(), to + sum, size - sum, static_cast<off_t>(position_));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) return STG_E_READFAULT;
      if (got == 0) break;
      sum += static_cast<ULONG>(got);
      position_ += static_cast<ULONGLONG>(got);
      if (read != nullptr) *read = sum;
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* written) override {
    if (written != nullptr) *written = 0;
    if ((mode_ & kModeAccess) == STGM_READ) return STG_E_ACCESSDENIED;
    const auto* from = static_cast<const char*>(data);
    ULONG sum = 0;
    while (sum < size) {
      const ssize_t put =
          pwrite(file_.Get(), from + sum, size - sum, static_cast<off_t>(position_));
      if (put < 0 && errno == EINTR) continue;
      if (put < 0) return FileError(errno);
      if (put == 0) return STG_E_WRITEFAULT;
      sum += static_cast<ULONG>(put);
      position_ += static_cast<ULONGLONG>(put);
      if (written != nullptr) *written = sum;
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin,
                                 ULARGE_INTEGER* position) override {
    ULONGLONG base = 0;
    switch (origin) {
      case STREAM_SEEK_SET:
        break;
      case STREAM_SEEK_CUR:
        base = position_;
        break;
      case STREAM_SEEK_END:
        base = Size();
        break;
      default:
        return E_INVALIDARG;
    }
    const HRESULT result = MovePosition(base, move.QuadPart, &position_);
    if (position != nullptr) position->QuadPart = position_;
    return result;
  }

  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override {
    if ((mode_ & kModeAccess) == STGM_READ) return STG_E_ACCESSDENIED;
    if (size.QuadPart > static_cast<ULONGLONG>(INT64_MAX)) return STG_E_MEDIUMFULL;
    return ftruncate(file_.Get(), static_cast<off_t>(size.QuadPart)) == 0 ? S_OK : FileError(errno);
  }

  HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                   ULARGE_INTEGER* written) override {
    if (target == nullptr) return STG_E_INVALIDPOINTER;
    // What is there now: the target may be another stream over this file.
    const ULONGLONG now = Size();
    const ULONGLONG left = position_ < now ? now - position_ : 0;
    return CopyBytes(this, target, std::min(size.QuadPart, left), read, written);
  }

  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override {
    const bool flush = (mode_ & kModeAccess) != STGM_READ &&
                       (flags & STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE) == 0;
    return !flush || fsync(file_.Get()) == 0 ? S_OK : FileError(errno);
  }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
    return E_NOTIMPL;
  }

  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override {
    const HRESULT result = StartStat(stat, flags, &path_);
    if (FAILED(result)) return result;
    stat->type = STGTY_STREAM;
    stat->cbSize.QuadPart = Size();
    stat->grfMode = mode_;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IStream** out) override {
    if (out != nullptr) *out = nullptr;
    return E_NOTIMPL;  // the system's neither
  }

 private:
  bool Answers(REFIID iid) const override {
    return iid == IID_IStream || iid == IID_ISequentialStream;
  }

  ULONGLONG Size() const {
    struct stat status = {};
    return fstat(file_.Get(), &status) == 0 ? static_cast<ULONGLONG>(status.st_size) : 0;
  }

  StorageDescriptor file_;
  DWORD mode_;
  std::u16string path_;
  ULONGLONG position_ = 0;
};

int OpenFlags(DWORD mode, BOOL create) {
  int flags = 0;
  if ((mode & STGM_CREATE) != 0) return O_RDWR | O_CREAT;  // it is to be emptied, even to read
  switch (mode & kModeAccess) {
    case STGM_READ:
      flags |= O_RDONLY;
      break;
    case STGM_WRITE:
      flags |= O_WRONLY;
      break;
    default:
      flags |= O_RDWR;
      break;
  }

  return create != FALSE ? flags | O_CREAT | O_EXCL : flags;
}

}  // namespace

}  // namespace zdm

HRESULT SHCreateStreamOnFileEx(LPCOLESTR path, DWORD mode, DWORD /*attributes*/, BOOL create,
                               IStream* /*pattern*/, IStream** out) try {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  if (path == nullptr) return E_INVALIDARG;
  std::string native;
  if (!zdm::NativePath(path, &native)) return zdm::Result(0x8007007B);
  zdm::StorageDescriptor file;
  const int flags = zdm::OpenFlags(mode, create);
  if (const int error = file.Open(native, flags)) return zdm::FileError(error);
  // Emptied only now: it is known to be a file.
  if ((mode & STGM_CREATE) != 0 && ftruncate(file.Get(), 0) != 0) return zdm::FileError(errno);
  *out = new zdm::FileStream(std::move(file), mode, path);
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
