// The tables of a document among bytes: by the names of their streams, else by what they say.
#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/SalvageScan.h"

#include <algorithm>
#include <cstring>

namespace zdm {

namespace {

constexpr std::size_t kStep = 64;  // streams begin at a multiple of it
constexpr std::size_t kSmallestRecord = 38;

template <class T>
T Read(std::span<const BYTE> bytes, std::size_t at) {
  T value;
  std::memcpy(&value, bytes.data() + at, sizeof(T));
  return value;
}

RawRun PartOf(const RawRun& run, std::size_t from, std::size_t length) {
  RawRun part;
  part.bytes.assign(run.bytes.begin() + static_cast<std::ptrdiff_t>(from),
                    run.bytes.begin() + static_cast<std::ptrdiff_t>(from + length));
  for (const RawRun::Piece& piece : run.pieces) {
    const std::size_t begin = std::max(piece.from, from);
    const std::size_t end = std::min(piece.from + piece.length, from + length);
    if (begin < end)
      part.pieces.push_back({begin - from, piece.place + begin - piece.from, end - begin});
  }
  return part;
}

void FlipBit(std::span<BYTE> bytes, std::size_t bit) {
  if (bit / 8 < bytes.size()) bytes[bit / 8] ^= static_cast<BYTE>(1 << bit % 8);
}

bool IsEntryLike(const IndexEntry& entry) {
  return entry.id != 0 && entry.id != kRootID && entry.length >= kSmallestRecord &&
         entry.length <= 0x7FFFFFFF && (entry.chunk & ~kEmbeddedChunk) < kMaxChunks &&
         entry.offset < kChunkSize;
}

/// Records tile their streams, in the order of their IDs.
bool Follows(const IndexEntry& entry, const IndexEntry& next) {
  if (entry.id >= next.id) return false;
  if (entry.chunk == next.chunk) return next.offset == entry.offset + entry.length;
  return next.chunk == entry.chunk + 1 && next.offset == 0;
}

}  // namespace

void SalvageScan::FindVersion() {
  constexpr std::size_t kFields = offsetof(VersionRecord, checksum);
  const auto take = [&](const RawRun& run, std::size_t at) {
    if (run.bytes.size() - at < sizeof(fields_)) return;
    RawRun part = PartOf(run, at, sizeof(fields_));
    const auto checksum = Read<ULONG>(part.bytes, kFields);
    const auto fields = std::span(part.bytes).first(kFields);
    Trust trust = Trust::kVerified;
    if (Crc32c(fields) != checksum) {
      const std::size_t bit = FlippedBit(fields, checksum);
      if (bit == kNoBit) return;
      FlipBit(fields, bit);
      trust = Trust::kMended;
    }
    if (!std::ranges::equal(kMagic, fields.first(sizeof(kMagic))) || trust >= version_.trust)
      return;
    std::memcpy(&fields_, part.bytes.data(), sizeof(fields_));
    version_ = {trust, std::move(part)};
  };
  for (const RawRun& run : container_.Find(kVersionStream)) take(run, 0);
  for (const RawRun& run : runs_) {
    for (std::size_t at = 0; at + sizeof(kMagic) <= run.bytes.size(); at += kStep) {
      if (std::memcmp(&run.bytes[at], kMagic, sizeof(kMagic)) == 0) take(run, at);
    }
  }
}

/// The stream of that name, the best of several.
FoundTable SalvageScan::FindTable(const OLECHAR* name, ULONG checksum) {
  FoundTable table;
  for (RawRun& run : container_.Find(name)) {
    Trust trust = Version() == nullptr ? Trust::kUnchecked : Trust::kDoubtful;
    if (Version() != nullptr && Spend(8 * run.bytes.size())) {
      if (Crc32c(run.bytes) == checksum) {
        trust = Trust::kVerified;
      } else if (const std::size_t bit = FlippedBit(run.bytes, checksum);
                 bit < 8 * run.bytes.size()) {
        FlipBit(run.bytes, bit);
        trust = Trust::kMended;
      }
    }
    if (trust < table.trust) table = {trust, std::move(run)};
  }
  return table;
}

/// A table whose stream has no name any more: `extent` says how long one is that begins with given
/// bytes, 0 for none.
template <class Extent>
FoundTable SalvageScan::SearchTable(ULONG checksum, Extent extent) {
  for (const RawRun& run : runs_) {
    for (std::size_t at = 0; at < run.bytes.size(); at += kStep) {
      const std::size_t length = extent(std::span(run.bytes).subspan(at));
      if (length == 0 || !Spend(length)) continue;
      if (Crc32c(std::span(run.bytes).subspan(at, length)) == checksum) {
        return {Trust::kVerified, PartOf(run, at, length)};
      }
    }
  }
  return {};
}

void SalvageScan::FindTables() {
  FindVersion();
  const auto isSound = [](const FoundTable& table) { return table.trust <= Trust::kMended; };
  const auto isEmpty = [&](ULONG checksum, std::span<const BYTE> bytes) {
    return Version() != nullptr && Crc32c(bytes) == checksum;
  };
  constexpr BYTE kNone[4] = {};
  ids_ = FindTable(kIDsStream, fields_.idsChecksum);
  paths_ = FindTable(kPathsStream, fields_.pathsChecksum);
  order_ = FindTable(kOrderStream, fields_.orderChecksum);
  index_ = FindTable(kIndexStream, fields_.indexChecksum);
  root_ = FindTable(kRootStream, fields_.rootChecksum);
  if (!isSound(paths_) && isEmpty(fields_.pathsChecksum, kNone)) {
    paths_ = {Trust::kVerified, {}};
    paths_.run.bytes.assign(kNone, kNone + sizeof(kNone));
  }
  if (!isSound(order_) && isEmpty(fields_.orderChecksum, {})) order_ = {Trust::kVerified, {}};
  if (Version() == nullptr || container_.IsSound()) return;

  if (!isSound(ids_)) {
    const std::size_t length = 4 + std::size_t{12} * fields_.idCount;
    FoundTable found = SearchTable(fields_.idsChecksum, [&](std::span<const BYTE> bytes) {
      return bytes.size() >= length && Read<ULONG>(bytes, 0) == fields_.idCount ? length : 0;
    });
    if (isSound(found)) ids_ = std::move(found);
  }
  if (!isSound(paths_)) {
    FoundTable found = SearchTable(fields_.pathsChecksum, [](std::span<const BYTE> bytes) {
      if (bytes.size() < 4) return std::size_t{0};
      std::size_t at = 4;
      for (ULONG left = Read<ULONG>(bytes, 0); left != 0; --left) {
        if (bytes.size() - at < 8) return std::size_t{0};
        const std::size_t steps = Read<ULONG>(bytes, at + 4);
        if (steps > (bytes.size() - at - 8) / 4) return std::size_t{0};
        at += 8 + 4 * steps;
      }
      return at > 4 ? at : 0;
    });
    if (isSound(found)) paths_ = std::move(found);
  }
}

/// By its header, when its stream has no name any more.
void SalvageScan::FindRoot() {
  if (root_.trust <= Trust::kMended) return;
  const GUID& wanted = ClassRow<CZDocument>::kClassID;
  for (const RawRun& run : runs_) {
    const std::span<const BYTE> all = run.bytes;
    for (std::size_t at = 0; at + sizeof(ObjectHeader) + 4 <= all.size(); at += kStep) {
      if (std::memcmp(&all[at], &wanted, sizeof(GUID)) != 0) continue;
      const auto header = Read<ObjectHeader>(all, at);
      const std::size_t length = sizeof(header) + 4 + Read<ULONG>(all, at + sizeof(header));
      if (header.id != kRootID || length > all.size() - at || !Spend(8 * length)) continue;
      FoundTable found = {Trust::kUnchecked, PartOf(run, at, length)};
      if (Version() != nullptr) {
        const std::size_t bit = FlippedBit(found.run.bytes, fields_.rootChecksum);
        found.trust = Crc32c(found.run.bytes) == fields_.rootChecksum ? Trust::kVerified
                      : bit != kNoBit                                 ? Trust::kMended
                                                                      : Trust::kDoubtful;
        if (found.trust == Trust::kMended) FlipBit(found.run.bytes, bit);
      }
      if (found.trust < root_.trust) root_ = std::move(found);
    }
  }
  if (root_.trust == Trust::kUnchecked || root_.trust == Trust::kDoubtful) {
    if (!Spend(root_.run.bytes.size()) ||
        trial_.Length(root_.run.bytes) != root_.run.bytes.size()) {
      root_ = {};
    }
  }
}

void SalvageScan::AddEntry(const IndexEntry& entry) {
  const auto [first, last] = entriesOf_.equal_range(entry.id);
  constexpr std::ptrdiff_t kEnough = 4;  // places for one ID
  std::ptrdiff_t known = 0;
  for (auto at = first; at != last; ++at, ++known) {
    if (std::memcmp(&entries_[at->second], &entry, sizeof(entry)) == 0) return;
  }
  if (known == kEnough) return;
  entriesOf_.emplace(entry.id, entries_.size());
  entries_.push_back(entry);
}

/// All of a whole index; of one that is not, those entries that have a neighbour that fits.
void SalvageScan::CollectEntries() {
  constexpr std::size_t kSize = sizeof(IndexEntry);
  if (index_.trust <= Trust::kMended) {
    const std::vector<BYTE>& bytes = index_.run.bytes;
    for (std::size_t at = 0; at + kSize <= bytes.size(); at += kSize) {
      const auto entry = Read<IndexEntry>(bytes, at);
      AddEntry(entry);
      if (entry.id != 0 && entry.id != kRootID) namedIds_.insert(entry.id);
    }
    return;
  }
  const auto collect = [&](const RawRun& run) {
    const std::span<const BYTE> all = run.bytes;
    std::size_t last = all.size();  // an entry that fits the one before it
    for (std::size_t at = 0; at + 2 * kSize <= all.size();) {
      const auto entry = Read<IndexEntry>(all, at);
      const auto next = Read<IndexEntry>(all, at + kSize);
      if (!IsEntryLike(entry) || !IsEntryLike(next) || !Follows(entry, next)) {
        at += 4;
        continue;
      }
      AddEntry(entry);
      AddEntry(next);
      if (last == at) namedIds_.insert(entry.id);  // it fits both its neighbours
      last = at + kSize;
      const RawRun part = PartOf(run, at, 2 * kSize);
      indexPieces_.insert(indexPieces_.end(), part.pieces.begin(), part.pieces.end());
      at += kSize;
    }
  };
  for (const RawRun& run : container_.Find(kIndexStream)) {
    if (run.bytes.size() == kSize) AddEntry(Read<IndexEntry>(run.bytes, 0));
  }
  for (const RawRun& run : runs_) collect(run);
}

/// What a table says that is not whole is not believed.
void SalvageScan::NameIDs() {
  if (ids_.trust > Trust::kMended) return;
  const std::vector<BYTE>& bytes = ids_.run.bytes;
  for (std::size_t at = 4; at + 12 <= bytes.size(); at += 12) {
    const auto id = Read<LONG>(bytes, at + 8);
    if (id != 0 && id != kRootID) namedIds_.insert(id);
  }
}

}  // namespace zdm
