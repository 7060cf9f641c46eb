#include "document/SalvageScan.h"

#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/EmbeddedFrame.h"
#include "platform/core/ZCore.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/EmbeddedRecord.h"
#include "zdm/module/DllRegisterZModule.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

namespace zdm {

namespace {

constexpr std::size_t kHeaderSize = sizeof(ObjectHeader) + sizeof(ULONG);
constexpr std::size_t kFrameHeadSize = 5;
constexpr std::size_t kWorkPerByte = 64;
constexpr std::size_t kLeastWork = std::size_t{1} << 24;
constexpr std::size_t kMaxAnchors = 8;  // of one stream: more than one where a chain is broken

ObjectHeader HeaderAt(std::span<const BYTE> bytes) {
  ObjectHeader header;
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header;
}

EmbeddedHeader FrameHeaderAt(std::span<const BYTE> frame) {
  EmbeddedHeader header;
  std::memcpy(&header, frame.data() + kFrameHeadSize, sizeof(header));
  return header;
}

bool IsFrameEntry(const IndexEntry& entry) { return (entry.chunk & kEmbeddedChunk) != 0; }

bool IsObjectID(LONG id) { return id != 0 && id != kRootID; }

LONG IDOf(std::span<const BYTE> bytes, bool isFrame) {
  return isFrame ? FrameHeaderAt(bytes).id : LONG{HeaderAt(bytes).id};
}

std::vector<BYTE> CopyOf(std::span<const BYTE> bytes) { return {bytes.begin(), bytes.end()}; }

/// The number of the stream of records at `path`, "Objects/00/1F".
bool ChunkOf(std::basic_string_view<OLECHAR> path, ULONG* chunk) {
  const auto slash = path.find(OLESTR('/'));
  const auto folder = path.substr(0, slash);
  if (folder != kObjectsStorage && folder != kEmbeddedStorage) return false;
  const auto rest = path.substr(std::min(path.size(), slash + 1));
  for (ULONG number = 0; rest.size() == 5 && number < kFanOut; ++number) {
    if (HexName(number) != rest.substr(0, 2)) continue;
    for (ULONG stream = 0; stream < kFanOut; ++stream) {
      if (HexName(stream) != rest.substr(3)) continue;
      *chunk = (number * kFanOut + stream) | (folder == kEmbeddedStorage ? kEmbeddedChunk : 0);
      return true;
    }
  }
  return false;
}

bool IsTable(std::basic_string_view<OLECHAR> path) {
  constexpr const OLECHAR* kTables[] = {kVersionStream, kIDsStream,   kPathsStream,
                                        kRootStream,    kIndexStream, kOrderStream};
  return std::ranges::find(kTables, path) != std::end(kTables);
}

}  // namespace

SalvageScan::SalvageScan(const RawContainer& container)
    : container_(container), runs_(container.Runs()) {
  std::size_t size = 0;
  for (const RawRun& run : runs_) size += run.bytes.size();
  work_ = size * kWorkPerByte + kLeastWork;
  FindTables();
  FindRoot();
  CollectEntries();
  NameIDs();
  for (const RawRun& run : runs_) isTaken_.emplace_back(run.bytes.size());
  AnchorByName();
  VerifyEntries(false);
  CollectClasses();
  CollectHits();
  VerifyHits();
  VerifyEntries(false);
  VerifyEntries(true);
  TakeLoadable();
}

/// False when all has been spent.
bool SalvageScan::Spend(std::size_t work) {
  if (work > work_) return false;
  work_ -= work;
  return true;
}

std::span<const BYTE> SalvageScan::BytesAt(Spot spot, std::size_t length) const {
  const std::span<const BYTE> all = runs_[spot.run].bytes;
  if (spot.at > all.size() || length > all.size() - spot.at) return {};
  return all.subspan(spot.at, length);
}

std::vector<RawRun::Piece> SalvageScan::PiecesAt(Spot spot, std::size_t length) const {
  std::vector<RawRun::Piece> pieces;
  const auto& all = runs_[spot.run].pieces;
  auto piece = std::ranges::upper_bound(all, spot.at, {}, &RawRun::Piece::from);
  for (--piece; length != 0 && piece != all.end(); ++piece) {
    const std::size_t skipped = spot.at - piece->from;
    const std::size_t part = std::min(length, piece->length - skipped);
    pieces.push_back({0, piece->place + skipped, part});
    spot.at += part;
    length -= part;
  }
  return pieces;
}

bool SalvageScan::Take(Spot spot, std::vector<BYTE> bytes, bool isFrame, Trust trust) {
  FoundRecord record = {};
  record.isFrame = isFrame;
  record.trust = trust;
  if (isFrame) {
    const EmbeddedHeader header = FrameHeaderAt(bytes);
    record.id = header.id;
    record.ownerId = header.ownerId;
    record.classId = header.classId;
  } else {
    const ObjectHeader header = HeaderAt(bytes);
    record.id = header.id;
    record.ownerId = header.ownerId;
    record.classId = header.classId;
    record.auxWords[0] = header.auxWord1;
    record.auxWords[1] = header.auxWord2;
  }
  if (!IsObjectID(record.id) || IsFound(record.id)) return false;
  record.pieces = PiecesAt(spot, bytes.size());
  std::fill_n(isTaken_[spot.run].begin() + static_cast<std::ptrdiff_t>(spot.at), bytes.size(),
              true);
  record.bytes = std::move(bytes);
  const LONG id = record.id;
  records_.emplace(id, std::move(record));
  return true;
}

/// Takes the record at `spot` when it is as the index says.
bool SalvageScan::Verify(Spot spot, const IndexEntry& entry, bool mend) {
  const auto bytes = BytesAt(spot, entry.length);
  const std::size_t least =
      IsFrameEntry(entry) ? kFrameHeadSize + sizeof(EmbeddedHeader) : kHeaderSize;
  if (bytes.size() < least || !Spend((mend ? 8 : 1) * bytes.size())) return false;
  if (isTaken_[spot.run][spot.at]) return false;
  std::vector<BYTE> record = CopyOf(bytes);
  if (Crc32c(bytes) != entry.checksum) {
    const std::size_t bit = mend ? FlippedBit(bytes, entry.checksum) : kNoBit;
    if (bit == kNoBit) return false;
    if (bit < 8 * record.size()) record[bit / 8] ^= static_cast<BYTE>(1 << bit % 8);
    if (IDOf(record, IsFrameEntry(entry)) != entry.id) return false;
  }
  return Take(spot, std::move(record), IsFrameEntry(entry),
              mend ? Trust::kMended : Trust::kVerified);
}

void SalvageScan::AnchorByName() {
  for (std::size_t run = 0; run < runs_.size(); ++run) {
    ULONG chunk = 0;
    if (ChunkOf(runs_[run].name, &chunk)) anchors_[chunk].push_back({run, 0});
  }
}

/// What the index says of streams whose places are known. Where nothing can be made of a record,
/// its place is noted.
void SalvageScan::VerifyEntries(bool mend) {
  for (const IndexEntry& entry : entries_) {
    const auto found = anchors_.find(entry.chunk);
    if (IsFound(entry.id) || found == anchors_.end()) continue;
    bool isFound = false;
    for (const Spot& anchor : found->second) {
      isFound = isFound || Verify({anchor.run, anchor.at + entry.offset}, entry, mend);
    }
    if (isFound || !mend) continue;
    for (const Spot& anchor : found->second) {
      const Spot spot = {anchor.run, anchor.at + entry.offset};
      if (BytesAt(spot, entry.length).empty()) continue;
      const auto pieces = PiecesAt(spot, entry.length);
      damaged_.insert(damaged_.end(), pieces.begin(), pieces.end());
      const bool isHeaderThere = !IsFrameEntry(entry) && entry.length >= kHeaderSize &&
                                 HeaderAt(BytesAt(spot, entry.length)).id == entry.id;
      if (isHeaderThere && TakeIfLoadable(spot, &entry) != 0) break;
    }
  }
}

/// Classes of objects that are registered, and those of the records found so far.
void SalvageScan::CollectClasses() {
  RegisterDocumentClasses();  // there may have been no document yet
  DllRegisterZModule();
  for (const CZRClass* registered : ZCore::GetZFactory()->GetClasses()) {
    const GUID& classId = registered->GetClassID();
    if (classId == ClassRow<CZDocument>::kClassID) continue;
    if (CreateAs<IZDMObject>(classId) != nullptr) classes_.push_back(classId);
  }
  for (const auto& [id, record] : records_) {
    if (!record.isFrame) classes_.push_back(record.classId);
  }
  const auto key = [](const GUID& classId) {
    ULONGLONG halves[2];
    std::memcpy(halves, &classId, sizeof(classId));
    return std::pair(halves[0], halves[1]);
  };
  std::ranges::sort(classes_, {}, key);
  classes_.erase(std::unique(classes_.begin(), classes_.end()), classes_.end());
}

/// Where a header of a record could begin, in bytes that belong to no record yet.
void SalvageScan::CollectHits() {
  std::vector<std::vector<GUID>> byStart(0x10000);
  for (const GUID& classId : classes_) byStart[classId.Data1 & 0xFFFF].push_back(classId);
  bool hasFrames = false;
  for (const IndexEntry& entry : entries_) hasFrames = hasFrames || IsFrameEntry(entry);
  for (std::size_t run = 0; run < runs_.size(); ++run) {
    if (IsTable(runs_[run].name)) continue;  // the name of any other may be damaged
    const std::span<const BYTE> all = runs_[run].bytes;
    for (std::size_t at = 0; at + kFrameHeadSize + sizeof(EmbeddedHeader) <= all.size(); ++at) {
      if (isTaken_[run][at]) continue;
      const BYTE* bytes = &all[at];
      if (hasFrames && (bytes[0] == 1 || bytes[0] == 2)) {
        const LONG id = FrameHeaderAt(all.subspan(at)).id;
        if (entriesOf_.contains(id)) hits_.push_back({{run, at}, id, true});
      }
      if (at + kHeaderSize > all.size()) continue;
      for (const GUID& classId : byStart[ReadU16(bytes)]) {
        if (std::memcmp(bytes, &classId, sizeof(classId)) != 0) continue;
        const LONG id = HeaderAt(all.subspan(at)).id;
        if (IsObjectID(id)) hits_.push_back({{run, at}, id, false});
      }
    }
  }
}

/// A record that is found where the index has another place for it tells where its stream begins.
void SalvageScan::VerifyHits() {
  for (const Hit& hit : hits_) {
    const auto [first, last] = entriesOf_.equal_range(hit.id);
    for (auto at = first; at != last; ++at) {
      const IndexEntry& entry = entries_[at->second];
      if (IsFrameEntry(entry) != hit.isFrame || !Verify(hit, entry, false)) continue;
      std::vector<Spot>& anchors = anchors_[entry.chunk];
      const Spot anchor = {hit.run, hit.at - entry.offset};
      const bool isKnown = std::ranges::any_of(anchors, [&](const Spot& known) {
        return known.run == anchor.run && known.at == anchor.at;
      });
      if (!isKnown && anchors.size() < kMaxAnchors) anchors.push_back(anchor);
      break;
    }
  }
}

/// Answers the length of what was taken; 0 for nothing.
/// @param entry  what the index says of it, or null.
std::size_t SalvageScan::TakeIfLoadable(Spot spot, const IndexEntry* entry) {
  if (isTaken_[spot.run][spot.at]) return 0;
  const std::span<const BYTE> rest = BytesAt(spot, runs_[spot.run].bytes.size() - spot.at);
  if (rest.size() < kHeaderSize) return 0;
  const std::size_t least = kHeaderSize + ReadU32(&rest[sizeof(ObjectHeader)]);
  // What a class writes behind the body is not counted by the body's length.
  constexpr std::size_t kTail = 4096;
  const std::size_t most = entry != nullptr ? entry->length : std::min(rest.size(), least + kTail);
  if (least > most || most > rest.size() || !Spend(8 * most)) return 0;
  const std::size_t length = trial_.Length(rest.first(most));
  const bool fits =
      entry != nullptr
          ? length == most
          : length == least || (length > least && IsEndOfRecord({spot.run, spot.at + length}));
  const Trust trust = entry != nullptr ? Trust::kDoubtful : Trust::kUnchecked;
  return fits && Take(spot, CopyOf(rest.first(length)), false, trust) ? length : 0;
}

/// The end of the bytes, a record that is found or a header.
bool SalvageScan::IsEndOfRecord(Spot spot) const {
  const RawRun& run = runs_[spot.run];
  if (spot.at >= run.bytes.size() || isTaken_[spot.run][spot.at]) return true;
  constexpr std::size_t kZeros = 16;
  const auto bytes = BytesAt(spot, std::min(kZeros, run.bytes.size() - spot.at));
  if (std::ranges::all_of(bytes, [](BYTE byte) { return byte == 0; })) return true;
  const auto hit = std::ranges::lower_bound(hits_, std::pair(spot.run, spot.at), {},
                                            [](const Hit& at) { return std::pair(at.run, at.at); });
  return hit != hits_.end() && hit->run == spot.run && hit->at == spot.at;
}

/// A record of a class that is neither available nor met before, between others. Answers its
/// length.
std::size_t SalvageScan::TakeUnnamedClass(Spot spot) {
  const auto head = BytesAt(spot, kHeaderSize);
  if (head.empty() || isTaken_[spot.run][spot.at]) return 0;
  const ObjectHeader header = HeaderAt(head);
  const std::size_t length = kHeaderSize + ReadU32(&head[sizeof(header)]);
  const auto bytes = BytesAt(spot, length);
  const bool fits = !(GUID(header.classId) == GUID_NULL) && header.type == 1 && !bytes.empty() &&
                    Spend(length) && IsEndOfRecord({spot.run, spot.at + length});
  return fits && Take(spot, CopyOf(bytes), false, Trust::kUnchecked) ? length : 0;
}

/// What is left has no checksum or does not fit it. A whole index names every ID there is.
void SalvageScan::TakeLoadable() {
  const bool isIndexWhole = index_.trust <= Trust::kMended;
  for (const Hit& hit : hits_) {
    if (isTaken_[hit.run][hit.at] || IsFound(hit.id)) continue;
    const auto [first, last] = entriesOf_.equal_range(hit.id);
    for (auto at = first; at != last; ++at) {
      const IndexEntry& entry = entries_[at->second];
      if (IsFrameEntry(entry) != hit.isFrame) continue;
      if (Verify(hit, entry, true) || (!hit.isFrame && TakeIfLoadable(hit, &entry) != 0)) break;
    }
    if (first != last || isIndexWhole || hit.isFrame) continue;
    Spot next = hit;
    for (std::size_t length = TakeIfLoadable(hit, nullptr); length != 0;
         length = TakeUnnamedClass(next)) {
      next.at += length;
    }
  }
}

}  // namespace zdm
