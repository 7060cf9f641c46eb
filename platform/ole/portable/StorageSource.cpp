#include "platform/ole/portable/StorageSource.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/ole/portable/StorageError.h"

namespace zdm {

namespace {

/// A file's bytes while they are checked.
class Mapping {
 public:
  Mapping(int file, std::size_t size) : size_(size) {
    if (size_ != 0) data_ = mmap(nullptr, size_, PROT_READ, MAP_SHARED, file, 0);
  }
  ~Mapping() {
    if (size_ != 0 && data_ != MAP_FAILED) munmap(data_, size_);
  }
  Mapping(const Mapping&) = delete;
  Mapping& operator=(const Mapping&) = delete;

  bool Failed() const { return data_ == MAP_FAILED; }
  const BYTE* Data() const { return static_cast<const BYTE*>(data_); }

 private:
  std::size_t size_;
  void* data_ = nullptr;
};

}  // namespace

HRESULT StorageSource::Open(const std::string& path, std::shared_ptr<StorageSource>* out,
                            CompoundFileReport* report) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return StorageError(errno, path);
  std::shared_ptr<StorageSource> source(new StorageSource(file));
  struct stat status = {};
  if (fstat(file, &status) != 0) return StorageError(errno, path);
  if (!S_ISREG(status.st_mode)) return STG_E_ACCESSDENIED;
  const auto size = static_cast<ULONGLONG>(status.st_size);
  const Mapping mapping(file, size);
  if (mapping.Failed()) return StorageError(errno, path);
  const HRESULT result = CheckCompoundFile(mapping.Data(), size, report, &source->layout_);
  if (FAILED(result)) return result == STG_E_INVALIDHEADER ? STG_E_FILEALREADYEXISTS : result;
  *out = std::move(source);
  return S_OK;
}

StorageSource::~StorageSource() {
  close(file_);
}

void StorageSource::TakeDirectory(std::vector<CompoundEntry>* entries,
                                  std::vector<CompoundLayout::Element>* elements) {
  *entries = std::exchange(layout_.entries, {});
  *elements = std::exchange(layout_.elements, {});
}

std::vector<StorageSource::Run> StorageSource::RunsOf(ULONG start, ULONGLONG size) const {
  const bool mini = size < kMiniStreamCutoff;
  const ULONG shift = layout_.sectorShift;
  const ULONGLONG step = mini ? kMiniSectorSize : ULONGLONG{1} << shift;
  const std::vector<ULONG>& table = mini ? layout_.miniFat : layout_.fat;
  std::vector<Run> runs;
  ULONGLONG next = 0;  // where the last run goes on in the file
  ULONG sector = start;
  for (ULONGLONG offset = 0; offset < size; offset += step, sector = table[sector]) {
    ULONGLONG place = (ULONGLONG{sector} + 1) << shift;
    if (mini) {
      const ULONGLONG inside = ULONGLONG{sector} * kMiniSectorSize;
      place = (ULONGLONG{layout_.miniStream[inside >> shift]} + 1) << shift;
      place += inside & ((ULONGLONG{1} << shift) - 1);
    }
    if (runs.empty() || place != next) runs.push_back({offset, place});
    next = place + step;
  }
  runs.push_back({size, 0});
  return runs;
}

HRESULT StorageSource::Read(ULONGLONG place, void* data, std::size_t size) const {
  auto* to = static_cast<char*>(data);
  while (size != 0) {
    const ssize_t got = pread(file_, to, size, static_cast<off_t>(place));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return STG_E_READFAULT;
    to += got;
    place += static_cast<ULONGLONG>(got);
    size -= static_cast<std::size_t>(got);
  }
  return S_OK;
}

}  // namespace zdm
