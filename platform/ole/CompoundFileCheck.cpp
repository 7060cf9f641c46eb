#include "platform/ole/CompoundFileCheck.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zdm {

namespace {

constexpr ULONGLONG MiniSectorsOf(ULONGLONG size) {
  return size / kMiniSectorSize + (size % kMiniSectorSize != 0);
}

/// One run over a file. Each step answers false after it noted the fault.
class Checker {
 public:
  Checker(const CompoundBytes& bytes, CompoundFileReport& report, CompoundLayout& layout)
      : image_(bytes), report_(report), layout_(layout) {}

  bool Run() { return Header() && Fat() && Directory() && Tree() && MiniStream() && Streams(); }

 private:
  bool Header();
  bool Fat();
  bool Directory();
  bool Tree();
  bool Siblings(ULONG storage, ULONG depth);
  bool Element(ULONG index);
  bool InOrder(ULONG before, ULONG after);
  bool NamesDiffer(std::size_t first);
  bool MiniStream();
  bool Streams();
  bool MiniChain(ULONG index);

  bool Fault(CompoundFault fault, ULONG place) {
    report_.fault = fault;
    report_.place = place;
    return false;
  }

  /// Takes a sector that nothing else has taken.
  bool Claim(ULONG sector) {
    if (sector >= image_.SectorCount() || used_[sector]) return false;
    used_[sector] = true;
    return true;
  }

  /// Claims the sectors of a chain and tells `visit` each. False when it leaves the file or crosses
  /// a sector in use, itself included.
  template <class Visit>
  bool Chain(ULONG start, Visit visit) {
    for (ULONG sector = start; sector != kEndOfChain; sector = layout_.fat[sector]) {
      if (sector >= layout_.fat.size() || !Claim(sector)) return false;
      visit(sector);
    }
    return true;
  }

  /// The bytes of a sector, until the next is read; null after it noted the fault.
  const BYTE* Sector(ULONG sector) {
    if (image_.ReadSector(sector, sector_.data())) return sector_.data();
    Fault(CompoundFault::kUnreadable, sector);
    return nullptr;
  }

  bool AppendTable(ULONG sector, std::vector<ULONG>& table) {
    const BYTE* bytes = Sector(sector);
    if (bytes == nullptr) return false;
    for (ULONG i = 0; i < image_.SectorSize(); i += 4) table.push_back(ReadU32(bytes + i));
    return true;
  }

  std::basic_string_view<OLECHAR> NameOf(ULONG entry) const {
    return layout_.entries[entry].Name();
  }

  struct Storage {
    ULONG entry;
    ULONG depth;
  };
  struct Step {
    ULONG entry;
    ULONG depth;  // in the tree of siblings, from 1
  };

  CompoundImage image_;
  CompoundFileReport& report_;
  CompoundLayout& layout_;
  CompoundHeader header_ = {};
  std::vector<BYTE> sector_;    // the one read last
  std::vector<bool> used_;      // sectors
  std::vector<bool> miniUsed_;  // mini sectors
  std::vector<bool> seen_;      // directory entries
  std::vector<Storage> storages_;
  std::vector<Step> path_;
};

bool Checker::Header() {
  if (!image_.IsReadable()) return Fault(CompoundFault::kUnreadable, 0);
  if (!image_.HasSignature()) return Fault(CompoundFault::kNotCompound, 0);
  if (!image_.ReadHeader(&header_)) return Fault(CompoundFault::kHeader, 0);
  const bool version3 = header_.majorVersion == 3 && header_.sectorShift == 9;
  const bool version4 = header_.majorVersion == 4 && header_.sectorShift == 12;
  if ((!version3 && !version4) || header_.byteOrder != 0xFFFE || header_.miniShift != 6 ||
      header_.miniCutoff != kMiniStreamCutoff) {
    return Fault(CompoundFault::kHeader, 0);
  }
  image_.SetSectorShift(header_.sectorShift);
  layout_.sectorShift = header_.sectorShift;
  sector_.resize(image_.SectorSize());
  used_.assign(image_.SectorCount(), false);
  return true;
}

// The places of the FAT's sectors stand in the header and, from the 110th on, in a chain of sectors
// whose last number is the next of the chain.
bool Checker::Fat() {
  const ULONG count = header_.fatSectors;
  const ULONG perSector = image_.SectorSize() / 4 - 1;
  if (count == 0 || count > image_.SectorCount() || header_.difatSectors > image_.SectorCount()) {
    return Fault(CompoundFault::kFatPlaces, 0);
  }
  std::vector<ULONG> places;
  places.reserve(count);
  for (ULONG i = 0; i < std::min(count, kHeaderFatPlaces); ++i) {
    places.push_back(image_.HeaderFatPlace(i));
  }
  ULONG next = header_.difatStart;
  for (ULONG i = 0; i < header_.difatSectors; ++i) {
    if (!Claim(next)) return Fault(CompoundFault::kFatPlaces, next);
    const BYTE* bytes = Sector(next);
    if (bytes == nullptr) return false;
    for (ULONG j = 0; j < perSector && places.size() < count; ++j) {
      places.push_back(ReadU32(bytes + std::size_t{4} * j));
    }
    next = ReadU32(bytes + std::size_t{4} * perSector);
  }
  if (places.size() < count || (next != kEndOfChain && next != kFreeSector)) {
    return Fault(CompoundFault::kFatPlaces, next);
  }
  layout_.fat.reserve(std::size_t{count} * (perSector + 1));
  for (const ULONG place : places) {
    if (!Claim(place)) return Fault(CompoundFault::kFatPlaces, place);
    if (!AppendTable(place, layout_.fat)) return false;
  }
  return true;
}

bool Checker::Directory() {
  std::vector<ULONG> sectors;
  if (!Chain(header_.directoryStart, [&](ULONG sector) { sectors.push_back(sector); }) ||
      sectors.empty()) {
    return Fault(CompoundFault::kDirectory, header_.directoryStart);
  }
  if (header_.majorVersion == 4 && header_.directorySectors != 0 &&
      header_.directorySectors != sectors.size()) {
    return Fault(CompoundFault::kDirectory, header_.directorySectors);
  }
  layout_.entries.reserve(sectors.size() * (image_.SectorSize() / kDirectoryEntrySize));
  for (const ULONG sector : sectors) {
    const BYTE* bytes = Sector(sector);
    if (bytes == nullptr) return false;
    for (ULONG i = 0; i < image_.SectorSize(); i += kDirectoryEntrySize) {
      layout_.entries.push_back(ReadCompoundEntry(bytes + i));
      // Sizes of version 3 have 32 bits; early programs left anything in the upper half.
      if (header_.majorVersion == 3) layout_.entries.back().size &= 0xFFFFFFFF;
    }
  }
  if (layout_.entries[0].type != kEntryRoot) return Fault(CompoundFault::kDirectory, 0);
  return true;
}

bool Checker::Tree() {
  seen_.assign(layout_.entries.size(), false);
  seen_[0] = true;
  storages_.push_back({0, 0});
  while (!storages_.empty()) {
    const Storage storage = storages_.back();
    storages_.pop_back();
    if (!Siblings(storage.entry, storage.depth)) return false;
  }
  for (ULONG i = 0; i < layout_.entries.size(); ++i) {
    // A stream or storage in use that no tree leads to would be lost without a word.
    if (!seen_[i] && layout_.entries[i].type != kEntryFree) return Fault(CompoundFault::kTree, i);
  }
  return true;
}

/// Walks the tree of a storage's elements from left to right. Its storages are walked later.
bool Checker::Siblings(ULONG storage, ULONG depth) {
  const std::size_t first = layout_.elements.size();
  ULONGLONG depths = 0;
  bool ordered = true;
  ULONG current = layout_.entries[storage].child;
  ULONG level = 1;
  path_.clear();
  while (current != kNoEntry || !path_.empty()) {
    for (; current != kNoEntry; current = layout_.entries[current].left) {
      if (current >= layout_.entries.size() || seen_[current]) {
        return Fault(CompoundFault::kTree, current);
      }
      seen_[current] = true;
      if (!Element(current)) return false;
      depths += level;
      path_.push_back({current, level++});
    }
    const Step step = path_.back();
    path_.pop_back();
    if (layout_.elements.size() > first) {
      const ULONG before = layout_.elements.back().entry;
      if (!InOrder(before, step.entry)) return Fault(CompoundFault::kTree, step.entry);
      ordered = ordered && CompareElementNames(NameOf(before), NameOf(step.entry)) < 0;
    }
    layout_.elements.push_back({step.entry, storage});
    if (layout_.entries[step.entry].type == kEntryStorage) {
      if (depth + 1 > kMaxStorageDepth) return Fault(CompoundFault::kDepth, step.entry);
      storages_.push_back({step.entry, depth + 1});
    }
    current = layout_.entries[step.entry].right;
    level = step.depth + 1;
  }
  const ULONGLONG count = layout_.elements.size() - first;
  if (depths > count * kMaxSiblingDepth) return Fault(CompoundFault::kDepth, storage);
  return ordered || NamesDiffer(first);
}

/// No two of the elements from `first` on have equal names. Asked where neighbours stand in an
/// order that is not ours, so that equal names need not be neighbours.
bool Checker::NamesDiffer(std::size_t first) {
  std::vector<ULONG> entries;
  entries.reserve(layout_.elements.size() - first);
  for (std::size_t i = first; i < layout_.elements.size(); ++i) {
    entries.push_back(layout_.elements[i].entry);
  }
  std::sort(entries.begin(), entries.end(), [this](ULONG left, ULONG right) {
    return CompareElementNames(NameOf(left), NameOf(right)) < 0;
  });
  for (std::size_t i = 1; i < entries.size(); ++i) {
    if (CompareElementNames(NameOf(entries[i - 1]), NameOf(entries[i])) == 0) {
      return Fault(CompoundFault::kTree, entries[i]);
    }
  }
  return true;
}

bool Checker::Element(ULONG index) {
  const CompoundEntry& entry = layout_.entries[index];
  if (entry.type == kEntryStorage) {
    ++report_.storages;
  } else if (entry.type == kEntryStream && entry.child == kNoEntry) {
    ++report_.streams;
  } else {
    return Fault(CompoundFault::kEntry, index);
  }
  const auto name = entry.Name();
  if (entry.nameBytes % 2 != 0 || !IsReadableElementName(name) || entry.name[name.size()] != 0) {
    return Fault(CompoundFault::kName, index);
  }
  return true;
}

/// `before` may stand left of `after`. Programs differ in the upper case of letters outside ASCII,
/// so where such a letter decides, only equal names are refused.
bool Checker::InOrder(ULONG before, ULONG after) {
  const auto left = NameOf(before);
  const auto right = NameOf(after);
  const int order = CompareElementNames(left, right);
  if (order <= 0) return order < 0;
  if (left.size() != right.size()) return false;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (UpperUnit(left[i]) != UpperUnit(right[i])) return left[i] >= 0x80 || right[i] >= 0x80;
  }
  return false;
}

bool Checker::MiniStream() {
  const CompoundEntry& root = layout_.entries[0];
  // Some programs count one table sector where there is none and no small stream either.
  const bool noTable = header_.miniFatSectors == 0 || header_.miniFatStart == kEndOfChain;
  std::vector<ULONG> sectors;
  if (!noTable && (!Chain(header_.miniFatStart, [&](ULONG sector) { sectors.push_back(sector); }) ||
                   sectors.size() != header_.miniFatSectors)) {
    return Fault(CompoundFault::kMiniStream, header_.miniFatStart);
  }
  layout_.miniFat.reserve(sectors.size() * (image_.SectorSize() / 4));
  for (const ULONG sector : sectors) {
    if (!AppendTable(sector, layout_.miniFat)) return false;
  }
  if (root.size == 0) return true;
  if (!Chain(root.start, [&](ULONG sector) { layout_.miniStream.push_back(sector); }) ||
      root.size > ULONGLONG{layout_.miniStream.size()} * image_.SectorSize()) {
    return Fault(CompoundFault::kMiniStream, root.start);
  }
  miniUsed_.assign(std::min<ULONGLONG>(MiniSectorsOf(root.size), layout_.miniFat.size()), false);
  return true;
}

bool Checker::Streams() {
  for (ULONG i = 1; i < layout_.entries.size(); ++i) {
    const CompoundEntry& entry = layout_.entries[i];
    if (entry.type != kEntryStream || entry.size == 0) continue;
    if (entry.size < kMiniStreamCutoff) {
      if (!MiniChain(i)) return Fault(CompoundFault::kChain, i);
      continue;
    }
    ULONGLONG sectors = 0;
    if (!Chain(entry.start, [&](ULONG) { ++sectors; }) ||
        entry.size > sectors * image_.SectorSize()) {
      return Fault(CompoundFault::kChain, i);
    }
  }
  return true;
}

bool Checker::MiniChain(ULONG index) {
  const CompoundEntry& entry = layout_.entries[index];
  ULONG count = 0;
  for (ULONG sector = entry.start; sector != kEndOfChain; sector = layout_.miniFat[sector]) {
    if (sector >= miniUsed_.size() || miniUsed_[sector]) return false;
    miniUsed_[sector] = true;
    ++count;
  }
  return count >= MiniSectorsOf(entry.size);
}

}  // namespace

const char* DescribeFault(CompoundFault fault) {
  switch (fault) {
    case CompoundFault::kNone:
      return "sound";
    case CompoundFault::kNotCompound:
      return "not a compound file";
    case CompoundFault::kHeader:
      return "header damaged";
    case CompoundFault::kFatPlaces:
      return "list of allocation table sectors damaged";
    case CompoundFault::kDirectory:
      return "directory damaged";
    case CompoundFault::kName:
      return "name of an element damaged";
    case CompoundFault::kEntry:
      return "directory entry damaged";
    case CompoundFault::kTree:
      return "tree of elements damaged";
    case CompoundFault::kDepth:
      return "elements nested too deep";
    case CompoundFault::kMiniStream:
      return "mini stream damaged";
    case CompoundFault::kChain:
      return "chain of a stream damaged";
    case CompoundFault::kUnreadable:
      return "cannot be read";
  }
  return "unknown";
}

HRESULT CheckCompoundFile(const CompoundBytes& bytes, CompoundFileReport* report,
                          CompoundLayout* layout) try {
  if (report != nullptr) *report = {};
  CompoundFileReport ownReport;
  CompoundLayout ownLayout;
  const bool sound = Checker(bytes, ownReport, ownLayout).Run();
  if (report != nullptr) *report = ownReport;
  if (layout != nullptr) *layout = std::move(ownLayout);
  if (sound) return S_OK;
  if (ownReport.fault == CompoundFault::kUnreadable) return STG_E_READFAULT;
  return ownReport.fault == CompoundFault::kNotCompound ? STG_E_INVALIDHEADER
                                                        : STG_E_DOCFILECORRUPT;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CheckCompoundFile(const BYTE* data, ULONGLONG size, CompoundFileReport* report,
                          CompoundLayout* layout) {
  return CheckCompoundFile(CompoundMemory(data, size), report, layout);
}

}  // namespace zdm
