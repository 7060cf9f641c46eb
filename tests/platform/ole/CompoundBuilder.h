// Builds the bytes of a compound file from a list of elements, and says where each part lies, so
// that tests can damage one field at a time.
//   header, directory, mini FAT, mini stream, large streams in the order of adding, FAT, further
//   places of the FAT (DIFAT)
#pragma once

#include "platform/ole/CompoundFile.h"
#include "platform/ole/ole.h"

#include <map>
#include <string>
#include <vector>

namespace zdm::test {

using Name = std::basic_string<OLECHAR>;
using Bytes = std::vector<BYTE>;

/// `size` bytes that differ from place to place and from `seed` to `seed`.
Bytes Pattern(std::size_t size, unsigned seed = 1);

/// "s" and the decimal digits of `number`.
Name Numbered(ULONG number);

class CompoundBuilder {
 public:
  /// Version 3 or 4.
  explicit CompoundBuilder(int version = 3) : shift_(version == 3 ? 9 : 12) {}

  /// Adds an element below `parent` (0: the root) and returns its directory entry.
  ULONG AddStorage(ULONG parent, Name name) { return Add(parent, std::move(name), true, {}); }
  ULONG AddStream(ULONG parent, Name name, Bytes bytes) {
    return Add(parent, std::move(name), false, std::move(bytes));
  }
  /// A stream of zeros behind all else, its bytes left to the caller: resize the written file to
  /// PlaceOf(SectorCount()). One at most.
  ULONG AddZeros(ULONG parent, Name name, ULONGLONG size) {
    zerosEntry_ = Add(parent, std::move(name), false, {});
    zeros_ = size;
    return zerosEntry_;
  }
  /// Siblings as a chain to the right instead of a balanced tree.
  void ChainSiblings() { chain_ = true; }

  Bytes Build();

  // After Build: offsets in the file.
  std::size_t EntryAt(ULONG entry) const { return sectorSize() + entry * std::size_t{128}; }
  std::size_t FatAt(ULONG sector) const { return PlaceOf(fatStart_) + sector * std::size_t{4}; }
  std::size_t MiniFatAt(ULONG sector) const {
    return PlaceOf(miniFatStart_) + sector * std::size_t{4};
  }
  std::size_t DifatAt() const { return PlaceOf(difatStart_); }
  std::size_t PlaceOf(ULONG sector) const { return (std::size_t{sector} + 1) << shift_; }
  // After Build: sectors.
  ULONG SectorOf(ULONG entry) const { return elements_[entry].start; }
  ULONG FatStart() const { return fatStart_; }
  ULONG MiniFatStart() const { return miniFatStart_; }
  ULONG MiniStreamStart() const { return elements_[0].start; }
  ULONG SectorCount() const { return sectors_; }
  ULONG UsedEntries() const { return static_cast<ULONG>(elements_.size()); }
  std::size_t sectorSize() const { return std::size_t{1} << shift_; }

 private:
  struct Element {
    ULONG parent;
    Name name;
    bool storage;
    Bytes bytes;
    ULONG start = kEndOfChain;
    ULONG left = kNoEntry;
    ULONG right = kNoEntry;
    ULONG child = kNoEntry;
  };

  ULONG Add(ULONG parent, Name name, bool storage, Bytes bytes);
  void LinkSiblings();
  ULONG SectorsOf(std::size_t size) const {
    return static_cast<ULONG>((size + sectorSize() - 1) >> shift_);
  }
  /// Appends `count` sectors to the file and chains them.
  ULONG Reserve(ULONG count);

  int shift_;
  bool chain_ = false;
  ULONG zerosEntry_ = 0;
  ULONGLONG zeros_ = 0;
  std::vector<Element> elements_ = {{0, OLESTR("Root Entry"), true, {}}};
  std::vector<ULONG> fat_;
  ULONG sectors_ = 0;
  ULONG fatStart_ = 0;
  ULONG miniFatStart_ = kEndOfChain;
  ULONG difatStart_ = kEndOfChain;
};

void Put16(Bytes& file, std::size_t at, USHORT value);
void Put32(Bytes& file, std::size_t at, ULONG value);
ULONG Get32(const Bytes& file, std::size_t at);

}  // namespace zdm::test
