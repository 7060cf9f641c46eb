#include "platform/ole/portable/StorageSave.h"

#include "platform/ole/portable/GsfWriter.h"
#include "platform/ole/portable/StorageDescriptor.h"
#include "platform/ole/portable/StorageError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace zdm {

namespace {

constexpr std::size_t kFileBuffer = std::size_t{256} << 10;

/// libgsf would write a longer stream too, and its size without the upper half.
HRESULT FitsWriter(const StorageNode& root) {
  std::vector<const StorageNode*> storages = {&root};
  while (!storages.empty()) {
    const StorageNode* storage = storages.back();
    storages.pop_back();
    if (storage->children.size() > StorageTree::kMaxElements) return STG_E_CANTSAVE;
    for (const auto& child : storage->children) {
      if (child->IsStorage()) storages.push_back(child.get());
      if (child->Size() > StreamContent::kMaxSize) return STG_E_DOCFILETOOLARGE;
    }
  }
  return S_OK;
}

using Path = std::unique_ptr<char, decltype(&std::free)>;

Path RealPath(const std::string& path) { return {realpath(path.c_str(), nullptr), &std::free}; }

/// A file beside the target, gone again unless it was put in its place.
class NewFile {
 public:
  NewFile() = default;
  ~NewFile() {
    Close();
    if (!path_.empty()) unlink(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// 0 or an errno. The name is short, however long the target's is.
  int Create(const std::string& target) {
    static std::atomic<unsigned> counter = 0;
    struct stat old = {};
    const bool replaces = stat(target.c_str(), &old) == 0;
    StorageDescriptor file;
    std::string path;
    int error = EEXIST;
    while (error == EEXIST) {  // left behind by a process that was ended, of the same number
      path = FolderOf(target) + "/.zdm-" + std::to_string(getpid()) + "-" +
             std::to_string(++counter) + "~";
      error = file.Open(path, O_RDWR | O_CREAT | O_EXCL, replaces ? 0600 : 0666);
    }
    if (error != 0) return error;
    path_ = std::move(path);
    if (replaces) TakeOver(file.Get(), old);
    file_ = fdopen(file.Get(), "w+b");
    if (file_ == nullptr) return errno;
    file.Detach();
    std::setvbuf(file_, nullptr, _IOFBF, kFileBuffer);
    return 0;
  }

  std::FILE* File() const { return file_; }
  bool Flush() const { return fsync(fileno(file_)) == 0; }
  bool Close() {
    std::FILE* file = std::exchange(file_, nullptr);
    return file == nullptr || std::fclose(file) == 0;
  }
  bool PlaceAt(const std::string& target) {
    if (std::rename(path_.c_str(), target.c_str()) != 0) return false;
    path_.clear();
    return true;
  }

 private:
  /// Owner and group first: a change of them takes rights away. A group that cannot be kept leaves
  /// its rights to nobody.
  static void TakeOver(int file, const struct stat& old) {
    mode_t rights = old.st_mode & 07777;
    if (fchown(file, old.st_uid, old.st_gid) != 0 &&
        fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0) {
      rights &= ~static_cast<mode_t>(070);
    }
    [[maybe_unused]] const int kept = fchmod(file, rights);
  }

  std::string path_;
  std::FILE* file_ = nullptr;
};

/// Some file systems know no flush of a folder.
bool FlushFolder(const StorageDescriptor& folder) {
  return fsync(folder.Get()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

}  // namespace

HRESULT ResolveTarget(const std::string& path, std::string* file) {
  if (const Path real = RealPath(path)) {
    *file = real.get();
    return S_OK;
  }
  if (errno != ENOENT) return StorageError(errno, path);
  struct stat status = {};
  if (lstat(path.c_str(), &status) == 0) return STG_E_ACCESSDENIED;
  const std::string name = path.substr(path.rfind('/') + 1);
  if (name.empty()) return STG_E_INVALIDNAME;
  const Path folder = RealPath(FolderOf(path));
  if (folder == nullptr) return errno == ENOENT ? STG_E_PATHNOTFOUND : StorageError(errno, path);
  *file = folder.get();
  if (file->back() != '/') *file += '/';
  *file += name;
  return S_OK;
}

HRESULT CheckTarget(const std::string& file) {
  struct stat status = {};
  if (lstat(file.c_str(), &status) == 0) {
    if (!S_ISREG(status.st_mode) || !MayAccess(file, W_OK)) return STG_E_ACCESSDENIED;
  } else if (errno != ENOENT) {
    return StorageError(errno, file);
  }
  if (MayAccess(FolderOf(file), W_OK | X_OK)) return S_OK;
  return errno == ENOENT ? STG_E_PATHNOTFOUND : STG_E_ACCESSDENIED;
}

HRESULT SaveTree(const StorageTree& tree, const std::string& file, bool flush) {
  HRESULT result = FitsWriter(*tree.Root());
  if (SUCCEEDED(result)) result = CheckTarget(file);
  if (FAILED(result)) return result;
  StorageDescriptor folder;  // opened first: what fails, fails before the rename
  int error = flush ? folder.OpenFolder(FolderOf(file)) : 0;
  NewFile made;
  if (error == 0) error = made.Create(file);
  if (error != 0) return StorageError(error, file);
  result = WriteWithGsf(*tree.Root(), made.File());
  if (FAILED(result)) return result;
  if (flush && !made.Flush()) return StorageError(errno, file);
  if (!made.Close() || !made.PlaceAt(file)) return StorageError(errno, file);
  return !flush || FlushFolder(folder) ? S_OK : StorageError(errno, file);
}

}  // namespace zdm
