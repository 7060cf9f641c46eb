// An opened compound file that passed the check: finds the bytes of its streams by following chains
// and reads them straight into the caller's memory. Only the tables are held, not the bytes, and a
// file that shrinks meanwhile gives a read error, not a crash.
#pragma once

#include "platform/ole/CompoundFileCheck.h"
#include "platform/ole/portable/StorageDescriptor.h"

#include <memory>
#include <string>
#include <vector>

namespace zdm {

class StorageSource {
 public:
  /// Neighbouring bytes of a stream that also stand side by side in the file.
  struct Run {
    ULONGLONG offset;  // in the stream
    ULONGLONG place;   // in the file
  };

  /// Opens and checks the file at `path`. STG_E_FILEALREADYEXISTS when it is no compound file (the
  /// system's answer), STG_E_DOCFILECORRUPT when it is damaged, STG_E_READFAULT.
  static HRESULT Open(const std::string& path, std::shared_ptr<StorageSource>* out,
                      CompoundFileReport* report);
  /// The directory of the file, handed over once; the tables stay.
  void TakeDirectory(std::vector<CompoundEntry>* entries,
                     std::vector<CompoundLayout::Element>* elements);

  /// The runs of a stream that begins at sector `start` and has `size` bytes. The last element
  /// stands behind the end of the stream; it has no place.
  std::vector<Run> RunsOf(ULONG start, ULONGLONG size) const;

  /// Reads `size` bytes at `place`; fewer are STG_E_READFAULT.
  HRESULT Read(ULONGLONG place, void* data, std::size_t size) const;

 private:
  explicit StorageSource(StorageDescriptor file) : file_(std::move(file)) {}

  StorageDescriptor file_;
  CompoundLayout layout_;
};

}  // namespace zdm
