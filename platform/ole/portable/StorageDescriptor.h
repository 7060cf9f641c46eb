// An open regular file with one owner: closed when the owner goes.
#pragma once

#include "platform/ole/portable/Types.h"

#include <string>
#include <utility>

namespace zdm {

class StorageDescriptor {
 public:
  StorageDescriptor() = default;
  ~StorageDescriptor();
  StorageDescriptor(StorageDescriptor&& other) noexcept
      : number_(std::exchange(other.number_, -1)) {}
  StorageDescriptor& operator=(StorageDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  /// Opens the file at `path` with `flags` of open(2), new files with `rights`. 0 or an errno;
  /// EACCES for what is no regular file, which never blocks.
  int Open(const std::string& path, int flags, unsigned rights = 0666);

  /// Opens a folder, to flush its names.
  int OpenFolder(const std::string& path);

  bool IsOpen() const { return number_ >= 0; }
  int Get() const { return number_; }
  /// Hands the number to the caller, who closes it.
  int Detach() { return std::exchange(number_, -1); }

  /// Reads `size` bytes at `place`; false for fewer.
  bool ReadAt(ULONGLONG place, void* data, std::size_t size) const;

 private:
  int number_ = -1;
};

}  // namespace zdm
