#include "document/RawContainer.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace zdm {

namespace {

constexpr ULONG kNowhere = kFreeSector;  // no successor, no predecessor
constexpr ULONG kFewLinks = 8;           // of a table's sector that is told by its content

/// The used entries of a directory, told by their form alone: a name that ends with a zero and has
/// only zeros behind it, and a type.
bool IsEntry(const BYTE* bytes) {
  const CompoundEntry entry = ReadCompoundEntry(bytes);
  const auto name = entry.Name();
  const bool isUsed =
      entry.type == kEntryStorage || entry.type == kEntryStream || entry.type == kEntryRoot;
  if (!isUsed || bytes[67] > 1 || entry.nameBytes % 2 != 0 || !IsReadableElementName(name)) {
    return false;
  }
  return std::all_of(entry.name + name.size(), std::end(entry.name),
                     [](OLECHAR unit) { return unit == 0; });
}

std::basic_string<OLECHAR> PathOf(const CompoundLayout& layout, const std::vector<ULONG>& parents,
                                  ULONG entry) {
  std::basic_string<OLECHAR> path(layout.entries[entry].Name());
  ULONG depth = 0;
  for (ULONG at = parents[entry]; at != 0 && depth < kMaxStorageDepth; at = parents[at], ++depth) {
    path.insert(0, 1, OLESTR('/'));
    path.insert(0, layout.entries[at].Name());
  }
  return path;
}

}  // namespace

void RawRun::Append(std::span<const BYTE> file, std::size_t place, std::size_t length) {
  if (length == 0) return;
  if (!pieces.empty() && pieces.back().place + pieces.back().length == place) {
    pieces.back().length += length;
  } else {
    pieces.push_back({bytes.size(), place, length});
  }
  const auto part = file.subspan(place, length);
  bytes.insert(bytes.end(), part.begin(), part.end());
}

RawContainer::RawContainer(std::span<const BYTE> file) : file_(file) {
  CompoundFileReport report;
  CompoundLayout layout;
  const HRESULT result = CheckCompoundFile(file.data(), file.size(), &report, &layout);
  if (result == E_OUTOFMEMORY) throw std::bad_alloc();
  fault_ = report.fault;
  if (result == S_OK) {
    TakeStreams(layout);
  } else {
    Rebuild();
  }
}

std::size_t RawContainer::LengthOf(ULONG sector) const {
  return std::min(std::size_t{1} << shift_, file_.size() - Place(sector));
}

/// At most `size` bytes of the sectors.
RawRun RawContainer::RunOf(const Sectors& sectors, std::size_t size) const {
  RawRun run;
  for (const ULONG sector : sectors) {
    const std::size_t length = std::min(LengthOf(sector), size - run.bytes.size());
    run.Append(file_, Place(sector), length);
  }
  return run;
}

// A sound container.

/// What no stream uses and the table does not call free is structure.
void RawContainer::TakeStreams(const CompoundLayout& layout) {
  hasStructure_ = true;
  shift_ = static_cast<USHORT>(layout.sectorShift);
  const std::size_t sectorSize = std::size_t{1} << shift_;
  count_ = static_cast<ULONG>(std::min<std::size_t>(file_.size() / sectorSize - 1, kMaxSector));
  std::vector<bool> isUsed(count_);
  std::vector<ULONG> parents(layout.entries.size());
  for (const auto& element : layout.elements) parents[element.entry] = element.parent;
  for (const ULONG sector : layout.miniStream) isUsed[sector] = true;
  for (const auto& element : layout.elements) {
    const CompoundEntry& entry = layout.entries[element.entry];
    if (entry.type != kEntryStream) continue;
    RawRun run;
    std::size_t left = static_cast<std::size_t>(entry.size);
    for (ULONG at = entry.start; left != 0;) {
      const bool isSmall = entry.size < kMiniStreamCutoff;
      const std::size_t unit = isSmall ? kMiniSectorSize : sectorSize;
      const std::size_t offset = isSmall ? at * unit : 0;
      const ULONG sector = isSmall ? layout.miniStream[offset >> shift_] : at;
      const std::size_t length = std::min(left, unit);
      run.Append(file_, Place(sector) + (offset & (sectorSize - 1)), length);
      isUsed[sector] = true;
      left -= length;
      at = isSmall ? layout.miniFat[at] : layout.fat[at];
    }
    run.name = PathOf(layout, parents, element.entry);
    runs_.push_back(std::move(run));
  }
  structure_.push_back({0, 0, sectorSize});
  for (ULONG sector = 0; sector < count_; ++sector) {
    const bool isFree = sector < layout.fat.size() && layout.fat[sector] == kFreeSector;
    const RawRun::Piece piece = {0, Place(sector), sectorSize};
    if (isFree || isUsed[sector]) {
      free_.push_back(piece);  // of a used one, what its streams leave
    } else {
      structure_.push_back(piece);
    }
  }
}

// A damaged one.

void RawContainer::Rebuild() {
  GuessSectorSize();
  const std::size_t sectorSize = std::size_t{1} << shift_;
  const std::size_t sectors = (file_.size() + sectorSize - 1) / sectorSize;
  count_ = sectors < 2 ? 0 : static_cast<ULONG>(std::min<std::size_t>(sectors - 1, kMaxSector));
  fat_.assign(count_, kFreeSector);
  isKnown_.assign(count_, false);
  isStructure_.assign(count_, false);
  CollectEntries();
  CollectTable();
  Link();
  if (!hasStructure_) {  // no container at all, or nothing left of one
    runs_.emplace_back().Append(file_, 0, file_.size());
    return;
  }
  structure_.push_back({0, 0, std::min(file_.size(), sectorSize)});
  for (ULONG sector = 0; sector < count_; ++sector) {
    if (isStructure_[sector]) structure_.push_back({0, Place(sector), LengthOf(sector)});
  }
  FollowChains();
}

/// Version and size say the same twice.
void RawContainer::GuessSectorSize() {
  const CompoundMemory memory(file_.data(), file_.size());
  const CompoundImage image(memory);
  CompoundHeader header;
  if (!image.ReadHeader(&header)) return;
  hasStructure_ = image.HasSignature();
  const bool isLarge = header.sectorShift == 12
                           ? header.majorVersion != 3
                           : header.sectorShift != 9 && header.majorVersion == 4;
  shift_ = isLarge ? 12 : 9;
}

void RawContainer::CollectEntries() {
  for (ULONG sector = 0; sector < count_; ++sector) {
    for (std::size_t at = 0; at + kDirectoryEntrySize <= LengthOf(sector);
         at += kDirectoryEntrySize) {
      const BYTE* bytes = &file_[Place(sector) + at];
      if (!IsEntry(bytes)) continue;
      isStructure_[sector] = true;
      hasStructure_ = true;
      entries_.push_back(ReadCompoundEntry(bytes));
      if (shift_ == 9) entries_.back().size &= 0xFFFFFFFF;
    }
  }
}

/// The allocation table's sectors: those that the header names, then those told by their content.
/// A table of the mini stream looks the same, but is not marked as a sector of the allocation
/// table.
void RawContainer::CollectTable() {
  const ULONG per = (ULONG{1} << shift_) / 4;
  const CompoundMemory memory(file_.data(), file_.size());
  const CompoundImage image(memory);
  CompoundHeader header;
  if (image.HasSignature() && image.ReadHeader(&header)) {
    for (ULONG i = 0; i < std::min(header.fatSectors, kHeaderFatPlaces); ++i) {
      TakeTableSector(image.HeaderFatPlace(i), i);
    }
    ULONG further = header.difatStart;
    ULONG index = kHeaderFatPlaces;
    for (ULONG i = 0; i < std::min(header.difatSectors, count_); ++i) {
      if (further >= count_ || !IsWhole(further)) break;
      isStructure_[further] = true;
      for (ULONG j = 0; j + 1 < per && index < header.fatSectors; ++j, ++index) {
        TakeTableSector(At(further, j), index);
      }
      further = At(further, per - 1);
    }
  }
  struct Candidate {
    ULONG sector;
    ULONG index;
  };
  std::vector<Candidate> candidates;
  for (ULONG sector = 0; sector < count_; ++sector) {
    ULONG index = 0;
    if (!isStructure_[sector] && TableIndexOf(sector, &index)) {
      if (sector / per == index && At(sector, sector % per) == kFatSector) {
        TakeTableSector(sector, index);
      } else {
        candidates.push_back({sector, index});
      }
    }
  }
  for (const Candidate& candidate : candidates) {
    if (fat_[candidate.sector] == kFatSector) TakeTableSector(candidate.sector, candidate.index);
  }
}

/// `sector` has piece `index` of the table, if it looks like one.
void RawContainer::TakeTableSector(ULONG sector, ULONG index) {
  const ULONG per = (ULONG{1} << shift_) / 4;
  const ULONGLONG first = ULONGLONG{index} * per;
  if (sector >= count_ || !IsWhole(sector) || first >= count_ || isKnown_[first]) return;
  ULONG likely = 0;
  ULONG zeros = 0;
  for (ULONG j = 0; j < per; ++j) {
    const ULONG value = At(sector, j);
    if (value < count_ || value >= kDifatSector) ++likely;
    if (value == 0) ++zeros;
  }
  if (likely < per / 2 || zeros > per / 2) return;
  isStructure_[sector] = true;
  hasStructure_ = true;
  for (ULONG j = 0; j < per && first + j < count_; ++j) {
    const auto at = static_cast<std::size_t>(first + j);
    fat_[at] = At(sector, j);
    isKnown_[at] = true;
    if (fat_[at] == kFatSector || fat_[at] == kDifatSector) isStructure_[at] = true;
  }
}

/// Most entries of a table name the sector behind their own, which tells the table's place.
bool RawContainer::TableIndexOf(ULONG sector, ULONG* index) const {
  if (!IsWhole(sector)) return false;
  const ULONG per = (ULONG{1} << shift_) / 4;
  ULONG votes = 0;
  ULONG marks = 0;
  for (ULONG j = 0; j < per; ++j) {
    const ULONG value = At(sector, j);
    if (value >= kDifatSector) {
      ++marks;
    } else if (value > j && (value - 1 - j) % per == 0) {
      const ULONG named = (value - 1 - j) / per;
      if (votes == 0) *index = named;
      if (named == *index) ++votes;
    }
  }
  return votes >= kFewLinks && votes + marks >= per - per / 8;
}

/// Who follows whom. A sector that two claim belongs to the one before it.
void RawContainer::Link() {
  next_.assign(count_, kNowhere);
  Sectors before(count_, kNowhere);
  const auto link = [&](ULONG from, ULONG to) {
    if (before[to] != kNowhere) next_[before[to]] = kNowhere;
    next_[from] = to;
    before[to] = from;
  };
  std::vector<bool> isFree(count_);
  for (ULONG sector = 0; sector < count_; ++sector) {
    if (isStructure_[sector] || !isKnown_[sector]) continue;
    const ULONG value = fat_[sector];
    if (value == kEndOfChain) {
      next_[sector] = kEndOfChain;
    } else if (value == kFreeSector) {
      const auto bytes = file_.subspan(Place(sector), LengthOf(sector));
      isFree[sector] = std::ranges::all_of(bytes, [](BYTE byte) { return byte == 0; });
      if (isFree[sector]) free_.push_back({0, Place(sector), bytes.size()});
    } else if (value != 0 && value < count_ && value != sector && !isStructure_[value] &&
               (before[value] == kNowhere || value == sector + 1)) {
      link(sector, value);
    }
  }
  for (ULONG sector = 0; sector < count_; ++sector) {
    if (isFree[sector]) isStructure_[sector] = true;  // in no chain
  }
  ULONG follower = count_;  // the first sector behind this one that may be in a chain
  for (ULONG sector = count_; sector-- > 0;) {
    if (isStructure_[sector]) continue;
    if (next_[sector] == kNowhere && follower < count_ && before[follower] == kNowhere) {
      link(sector, follower);
    }
    if (next_[sector] == kNowhere) next_[sector] = kEndOfChain;
    follower = sector;
  }
}

/// Every sector is in one chain: chains from their first sectors, then what runs in circles.
void RawContainer::FollowChains() {
  std::vector<bool> isFollowed(count_);
  std::vector<bool> isDone = isStructure_;
  for (ULONG sector = 0; sector < count_; ++sector) {
    if (next_[sector] < count_) isFollowed[next_[sector]] = true;
  }
  for (const bool circles : {false, true}) {
    for (ULONG sector = 0; sector < count_; ++sector) {
      if (isDone[sector] || (!circles && isFollowed[sector])) continue;
      Sectors chain;
      for (ULONG at = sector; at < count_ && !isDone[at]; at = next_[at]) {
        isDone[at] = true;
        chain.push_back(at);
      }
      runs_.push_back(RunOf(chain, file_.size()));
    }
  }
}

/// At most as many sectors as `size` bytes need.
RawContainer::Sectors RawContainer::ChainFrom(ULONG sector, std::size_t size) const {
  const std::size_t limit = (size >> shift_) + 1;
  Sectors chain;
  for (; sector < count_ && chain.size() < limit; sector = next_[sector]) chain.push_back(sector);
  return chain;
}

/// Small streams stand in the mini stream, each in one piece.
void RawContainer::AddSmall(const CompoundEntry& entry, std::vector<RawRun>* found) const {
  const std::size_t from = std::size_t{entry.start} * kMiniSectorSize;
  const auto size = static_cast<std::size_t>(entry.size);
  for (const CompoundEntry& root : entries_) {
    if (root.type != kEntryRoot || from + size > file_.size()) continue;
    const RawRun mini = RunOf(ChainFrom(root.start, from + size), from + size);
    if (mini.bytes.size() != from + size) continue;
    RawRun run;
    for (const RawRun::Piece& piece : mini.pieces) {
      const std::size_t skipped = from > piece.from ? std::min(from - piece.from, piece.length) : 0;
      run.Append(file_, piece.place + skipped, piece.length - skipped);
    }
    found->push_back(std::move(run));
  }
}

std::vector<RawRun> RawContainer::Find(std::basic_string_view<OLECHAR> name) const {
  constexpr std::size_t kEnough = 16;
  std::vector<RawRun> found;
  if (IsSound()) {
    std::ranges::copy_if(runs_, std::back_inserter(found),
                         [&](const RawRun& run) { return run.name == name; });
    return found;
  }
  for (const CompoundEntry& entry : entries_) {
    if (entry.type != kEntryStream || entry.Name() != name || found.size() >= kEnough) continue;
    if (entry.size > file_.size()) continue;
    if (entry.size < kMiniStreamCutoff) {
      AddSmall(entry, &found);
    } else {
      const auto size = static_cast<std::size_t>(entry.size);
      found.push_back(RunOf(ChainFrom(entry.start, size), size));
    }
  }
  return found;
}

}  // namespace zdm
