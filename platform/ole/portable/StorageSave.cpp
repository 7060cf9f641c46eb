#include "platform/ole/portable/StorageSave.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/ole/portable/GsfWriter.h"
#include "platform/ole/portable/StorageError.h"

namespace zdm {

namespace {

constexpr std::size_t kFileBuffer = 256 * 1024;

bool FitsWriter(const StorageNode& root) {
  std::vector<const StorageNode*> storages = {&root};
  while (!storages.empty()) {
    const StorageNode* storage = storages.back();
    storages.pop_back();
    if (storage->children.size() > StorageTree::kMaxElements) return false;
    for (const auto& [name, child] : storage->children) {
      if (child->IsStorage()) storages.push_back(child.get());
    }
  }
  return true;
}

/// A link stays a link: the file it leads to is replaced.
std::string Target(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real == nullptr ? path : real.get();
}

/// A file beside the target, gone again unless it was put in its place.
class NewFile {
 public:
  explicit NewFile(const std::string& target) {
    static std::atomic<unsigned> counter = 0;
    path_ = target + ".~" + std::to_string(getpid()) + "-" + std::to_string(++counter);
    const int file = open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return;
    struct stat old = {};
    if (stat(target.c_str(), &old) == 0) {
      [[maybe_unused]] const int kept = fchmod(file, old.st_mode & 07777);
    }
    file_ = fdopen(file, "w+b");
    if (file_ == nullptr) {
      close(file);
      unlink(path_.c_str());
      return;
    }
    std::setvbuf(file_, nullptr, _IOFBF, kFileBuffer);
  }
  ~NewFile() {
    if (file_ == nullptr) return;
    std::fclose(file_);
    if (!placed_) unlink(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  std::FILE* File() const { return file_; }
  bool Flush() const { return fsync(fileno(file_)) == 0; }
  bool PlaceAt(const std::string& target) {
    placed_ = std::rename(path_.c_str(), target.c_str()) == 0;
    return placed_;
  }

 private:
  std::string path_;
  std::FILE* file_ = nullptr;
  bool placed_ = false;
};

bool FlushFolder(const std::string& path) {
  const int folder = open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return false;
  const bool flushed = fsync(folder) == 0;
  close(folder);
  return flushed;
}

}  // namespace

HRESULT SaveTree(const StorageTree& tree, const std::string& path, bool flush) {
  if (!FitsWriter(*tree.Root())) return STG_E_CANTSAVE;
  const std::string target = Target(path);
  errno = 0;
  NewFile file(target);
  if (file.File() == nullptr) return StorageError(errno, target);
  const HRESULT result = WriteWithGsf(*tree.Root(), file.File());
  if (FAILED(result)) return result;
  if (flush && !file.Flush()) return StorageError(errno, target);
  if (!file.PlaceAt(target)) return StorageError(errno, target);
  if (flush && !FlushFolder(target)) return StorageError(errno, target);
  return S_OK;
}

}  // namespace zdm
