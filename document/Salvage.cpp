#include "document/Salvage.h"

#include "document/CZDMAbsentObject.h"
#include "document/DocumentError.h"
#include "document/EmbeddedFrame.h"
#include "document/ManagerOrder.h"
#include "document/ObjectRecord.h"
#include "document/PathText.h"
#include "document/Recovered.h"
#include "document/SalvageScan.h"
#include "document/StreamOver.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <new>
#include <unordered_map>
#include <unordered_set>

namespace zdm {

namespace {

bool IsWhole(const FoundTable& table) { return table.trust <= Trust::kMended; }
bool IsUsable(const FoundTable& table) { return table.trust <= Trust::kUnchecked; }

/// A stream to read bytes with.
class Reading {
 public:
  explicit Reading(std::vector<BYTE> bytes)
      : content_(std::move(bytes)), stream_(StreamOver(content_)) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  operator IZStream*() const { return stream_; }
  IZStream* operator->() const { return stream_; }

 private:
  BytesStream content_;
  ZRefPtr<IZStream> stream_;
};

/// Puts a document together from what was found.
class Builder {
 public:
  explicit Builder(const SalvageScan& scan)
      : scan_(scan), document_(MakeObject<CZDocument, CZDocument>()) {}

  ZRefPtr<CZDocument> Build() {
    ListIDs();
    document_->BeginLoading();
    try {
      LoadPaths();
      LoadObjects();
      LoadRoot();
      document_->EndLoading();
    } catch (...) {
      document_->AbandonLoading();
      throw;
    }
    AdoptStrays();
    if (IsUsable(scan_.Order())) LoadOrder(*document_, Reading(scan_.Order().run.bytes));
    if (!hasRoot_) MakeDefaults();
    document_->SetModified(true);
    return document_;
  }

  const std::unordered_set<LONG>& Ownerless() const { return ownerless_; }

 private:
  void ListIDs();
  void LoadPaths();
  void FindRings();
  void LoadObjects();
  void LoadRoot();
  void AdoptStrays();
  void MakeDefaults();

  const SalvageScan& scan_;
  ZRefPtr<CZDocument> document_;
  bool hasRoot_ = false;
  std::unordered_set<LONG> onRing_;
  std::unordered_set<LONG> ownerless_;
};

/// Without an ID table the records' headers tell the carried words.
void Builder::ListIDs() {
  COIDManager& ids = *document_->GetOIDManager();
  if (IsWhole(scan_.IDs())) ids.Load(Reading(scan_.IDs().run.bytes));
  std::unordered_set<LONG> listed;
  const auto list = [&](const LONG(&words)[2], LONG id) {
    if (!listed.insert(id).second) return;
    auto oid = std::make_unique<OID>(words[0], words[1], id, nullptr);
    ids.AddOID(oid.get());
    static_cast<void>(oid.release());  // the table keeps it
  };
  for (const OID* oid : ids.GetOIDs()) listed.insert(oid->ID);
  for (const auto& [id, record] : scan_.Records()) list(record.auxWords, id);
  for (const LONG id : scan_.NamedIDs()) list({0, 0}, id);
  ids.ReSort();
}

/// Without checksum they must be readable to their end.
void Builder::LoadPaths() {
  if (!IsUsable(scan_.Paths())) return;
  const auto loads = [&](CPIDManager& paths, COIDManager* ids) {
    const Reading stream(scan_.Paths().run.bytes);
    return paths.Load(stream, ids) && stream->GetBytesLeft() == 0;
  };
  CPIDManager trial;
  if (loads(trial, nullptr)) loads(*document_->GetPIDManager(), document_->GetOIDManager());
}

/// Owners that lead back to where they began: the first of each ring that is met has none then.
void Builder::FindRings() {
  std::unordered_map<LONG, LONG> walkOf;  // by ID, the walk that came along
  for (const auto& [first, record] : scan_.Records()) {
    for (LONG id = first;;) {
      const auto at = scan_.Records().find(id);
      if (at == scan_.Records().end()) break;
      const auto [walk, isNew] = walkOf.emplace(id, first);
      if (!isNew) {
        if (walk->second == first) onRing_.insert(id);
        break;
      }
      id = at->second.ownerId;
    }
  }
}

/// The owner of a doubtful record may be another one than was saved.
void Builder::LoadObjects() {
  FindRings();
  for (const auto& [id, record] : scan_.Records()) {
    std::vector<BYTE> bytes = record.bytes;
    if (record.trust == Trust::kDoubtful || onRing_.contains(id)) {
      constexpr std::size_t kFrameOwner = 5 + sizeof(GUID) + sizeof(LONG);
      const std::size_t at = record.isFrame ? kFrameOwner : offsetof(ObjectHeader, ownerId);
      std::memset(&bytes[at], 0, sizeof(LONG));
    }
    if (record.isFrame) {
      LoadFrame(*document_, id, bytes);
    } else {
      LoadObject(*document_, id, 0, bytes, Reading(bytes));
    }
  }
}

void Builder::LoadRoot() {
  if (scan_.Root().trust == Trust::kNone) return;
  hasRoot_ =
      LoadGuarded(document_, [&] { document_->Load(Reading(scan_.Root().run.bytes), document_); });
}

/// They stay in no manager when the last ID is taken, so that there is none for Recovered.
void Builder::AdoptStrays() {
  const std::vector<ZRefPtr<IZDMObject>> strays = document_->GetStrays();
  for (const auto& stray : strays) ownerless_.insert(static_cast<LONG>(stray->GetID()));
  const std::vector<OID*>& oids = document_->GetOIDManager()->GetOIDs();
  if (strays.empty() || oids.back()->ID == std::numeric_limits<LONG>::max()) return;
  document_->ForgetStrays();
  IZDMObjMgr* recovered = RecoveredManager(*document_);
  for (const auto& stray : strays) Adopt(*recovered, stray);
}

/// Nothing tells any more what the document was given, so it gets what a new one has.
void Builder::MakeDefaults() {
  constexpr LONG kLeast = std::numeric_limits<LONG>::min() + 8;  // hard IDs are left for it
  const std::vector<OID*>& oids = document_->GetOIDManager()->GetOIDs();
  if (oids.empty() || oids.front()->ID > kLeast) document_->MakeDefaults();
}

TableState StateOf(const FoundTable& table) {
  switch (table.trust) {
    case Trust::kVerified:
      return TableState::kSound;
    case Trust::kMended:
      return TableState::kMended;
    case Trust::kUnchecked:
      return TableState::kUnchecked;
    default:
      return TableState::kLost;
  }
}

/// The later of two that lay claim to a byte has it.
std::vector<FileRange> RangesOf(const RawContainer& container, const SalvageScan& scan,
                                std::size_t size) {
  std::vector<RangeKind> kinds(size, RangeKind::kUnknown);
  const auto paint = [&](const std::vector<RawRun::Piece>& pieces, RangeKind kind) {
    for (const RawRun::Piece& piece : pieces) {
      std::fill_n(kinds.begin() + static_cast<std::ptrdiff_t>(piece.place), piece.length, kind);
    }
  };
  paint(container.Structure(), RangeKind::kContainer);
  paint(container.Free(), RangeKind::kFree);
  paint(scan.IndexPieces(), RangeKind::kTables);
  for (const FoundTable* table : {&scan.VersionTable(), &scan.IDs(), &scan.Paths(), &scan.Root(),
                                  &scan.Order(), &scan.Index()}) {
    paint(table->run.pieces,
          table->trust == Trust::kDoubtful ? RangeKind::kDamaged : RangeKind::kTables);
  }
  paint(scan.Damaged(), RangeKind::kDamaged);
  for (const auto& [id, record] : scan.Records()) paint(record.pieces, RangeKind::kRecords);

  std::vector<FileRange> ranges;
  for (std::size_t at = 0; at < size; ++at) {
    if (ranges.empty() || ranges.back().kind != kinds[at]) ranges.push_back({at, at, kinds[at]});
    ranges.back().end = at + 1;
  }
  return ranges;
}

SalvageLedger Account(const RawContainer& container, const SalvageScan& scan, std::size_t size,
                      CZDocument& document, const std::unordered_set<LONG>& ownerless) {
  SalvageLedger ledger;
  ledger.stage = container.IsSound()        ? SalvageStage::kStreams
                 : container.HasStructure() ? SalvageStage::kContainer
                                            : SalvageStage::kBytes;
  ledger.containerFault = DescribeFault(container.Fault());
  ledger.fileSize = size;
  ledger.tables = {{"Version", StateOf(scan.VersionTable())}, {"IDs", StateOf(scan.IDs())},
                   {"Paths", StateOf(scan.Paths())},          {"Root", StateOf(scan.Root())},
                   {"Index", StateOf(scan.Index())},          {"Order", StateOf(scan.Order())}};
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    SalvagedObject object = {};
    object.id = oid->ID;
    object.fate = ObjectFate::kLost;
    const auto found = scan.Records().find(oid->ID);
    if (oid->Object != nullptr && found == scan.Records().end()) continue;  // made here
    if (oid->Object != nullptr) {
      const FoundRecord& record = found->second;
      object.fate = record.trust == Trust::kDoubtful ? ObjectFate::kDoubtful
                    : dynamic_cast<CZDMAbsentObject*>(oid->Object) != nullptr
                        ? ObjectFate::kAbsentClass
                        : ObjectFate::kRecovered;
      object.isMended = record.trust == Trust::kMended;
      object.isUnchecked = record.trust == Trust::kUnchecked;
      object.isOwnerless = ownerless.contains(oid->ID);
      object.ownerId = record.ownerId;
      object.classId = record.classId;
      object.place = record.pieces.front().place;
      object.length = record.bytes.size();
    }
    ledger.objects.push_back(object);
  }
  ledger.ranges = RangesOf(container, scan, size);
  return ledger;
}

/// @param opened  the document of a sound file, or null.
Salvaged SalvageFrom(std::span<const BYTE> file, ZRefPtr<CZDocument> opened,
                     const std::string& name) try {
  const RawContainer container(file);
  const SalvageScan scan(container);
  std::unordered_set<LONG> ownerless;
  if (opened == nullptr) {
    const VersionRecord* version = scan.Version();
    if (version != nullptr && version->version > kFormatVersion) {
      throw DocumentError(DocumentFault::kNewerFormat, STG_E_OLDFORMAT,
                          name + ": written in a later format");
    }
    if (version == nullptr && scan.Root().trust == Trust::kNone && scan.Records().empty() &&
        scan.NamedIDs().empty()) {
      throw DocumentError(DocumentFault::kNotDocument, STG_E_FILEALREADYEXISTS,
                          name + ": nothing of a document found");
    }
    Builder builder(scan);
    opened = builder.Build();
    ownerless = builder.Ownerless();
    return {opened, Account(container, scan, file.size(), *opened, ownerless)};
  }
  for (const auto& stray : opened->GetStrays()) ownerless.insert(static_cast<LONG>(stray->GetID()));
  SalvageLedger ledger = Account(container, scan, file.size(), *opened, ownerless);
  ledger.stage = SalvageStage::kSound;
  return {opened, std::move(ledger)};
} catch (const CAtlException& failure) {
  throw ErrorOf(failure.m_hr, name);
} catch (const std::bad_alloc&) {
  throw ErrorOf(E_OUTOFMEMORY, name);
}

std::vector<BYTE> BytesOf(const std::filesystem::path& path, const std::string& name) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  const auto size = static_cast<std::streamoff>(in.tellg());
  if (!in || size < 0) throw ErrorOf(STG_E_ACCESSDENIED, name);
  std::vector<BYTE> bytes(static_cast<std::size_t>(size));
  auto* const to = reinterpret_cast<char*>(bytes.data());
  in.seekg(0);
  if (in.read(to, size)) return bytes;
  // Of a disk that fails in places the others are read.
  constexpr std::streamoff kPiece = 4096;
  for (std::streamoff at = 0; at < size; at += kPiece) {
    in.clear();
    in.seekg(at);
    in.read(to + at, std::min(kPiece, size - at));
  }
  return bytes;
}

}  // namespace

Salvaged Salvage(const std::filesystem::path& path, IZProgressMeter* meter) {
  const std::string name = ToUtf8(WideName(path));
  ZRefPtr<CZDocument> opened;
  try {
    opened = CZDocument::Open(path, meter);
  } catch (const DocumentError& error) {
    if (error.Fault() == DocumentFault::kNotFound || error.Fault() == DocumentFault::kNoAccess ||
        error.Fault() == DocumentFault::kNoMemory) {
      throw;
    }
  }
  return SalvageFrom(BytesOf(path, name), std::move(opened), name);
}

Salvaged Salvage(std::span<const BYTE> file) { return SalvageFrom(file, nullptr, "file"); }

}  // namespace zdm
