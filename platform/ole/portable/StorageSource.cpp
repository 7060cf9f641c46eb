#include "platform/ole/portable/StorageSource.h"

#include "platform/ole/portable/StorageError.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace zdm {

namespace {

/// The bytes of an open file. Not a mapping: a file that is cut meanwhile must not crash.
class FileBytes final : public CompoundBytes {
 public:
  FileBytes(const StorageDescriptor& file, ULONGLONG size) : file_(file), size_(size) {}

  ULONGLONG Size() const override { return size_; }
  bool Read(ULONGLONG place, void* data, std::size_t size) const override {
    return file_.ReadAt(place, data, size);
  }

 private:
  const StorageDescriptor& file_;
  ULONGLONG size_;
};

}  // namespace

HRESULT StorageSource::Open(const std::string& path, std::shared_ptr<StorageSource>* out,
                            CompoundFileReport* report) {
  StorageDescriptor file;
  if (const int error = file.Open(path, O_RDONLY)) return StorageError(error, path);
  struct stat status = {};
  if (fstat(file.Get(), &status) != 0) return StorageError(errno, path);
  std::shared_ptr<StorageSource> source(new StorageSource(std::move(file)));
  const FileBytes bytes(source->file_, static_cast<ULONGLONG>(status.st_size));
  const HRESULT result = CheckCompoundFile(bytes, report, &source->layout_);
  if (FAILED(result)) return result == STG_E_INVALIDHEADER ? STG_E_FILEALREADYEXISTS : result;
  *out = std::move(source);
  return S_OK;
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
  return file_.ReadAt(place, data, size) ? S_OK : STG_E_READFAULT;
}

}  // namespace zdm
