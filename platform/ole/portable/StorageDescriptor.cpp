#include "platform/ole/portable/StorageDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace zdm {

StorageDescriptor::~StorageDescriptor() {
  if (IsOpen()) close(number_);
}

int StorageDescriptor::Open(const std::string& path, int flags, unsigned rights) {
  // Opening a pipe would wait for its other end.
  StorageDescriptor file;
  file.number_ = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, rights);
  if (!file.IsOpen()) return errno;
  struct stat status = {};
  if (fstat(file.number_, &status) != 0) return errno;
  if (!S_ISREG(status.st_mode)) return EACCES;
  const int set = fcntl(file.number_, F_GETFL);
  if (set < 0 || fcntl(file.number_, F_SETFL, set & ~O_NONBLOCK) != 0) return errno;
  *this = std::move(file);
  return 0;
}

int StorageDescriptor::OpenFolder(const std::string& path) {
  StorageDescriptor folder;
  folder.number_ = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (!folder.IsOpen()) return errno;
  *this = std::move(folder);
  return 0;
}

bool StorageDescriptor::ReadAt(ULONGLONG place, void* data, std::size_t size) const {
  auto* to = static_cast<char*>(data);
  while (size != 0) {
    const ssize_t got = pread(number_, to, size, static_cast<off_t>(place));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    to += got;
    place += static_cast<ULONGLONG>(got);
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace zdm
