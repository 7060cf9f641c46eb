#include "document/DocumentReader.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/DocumentError.h"
#include "document/EmbeddedFrame.h"
#include "document/ManagerOrder.h"
#include "document/ObjectRecord.h"
#include "document/PathText.h"
#include "platform/ole/CAtlException.h"
#include "platform/ole/StorageFile.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <cstring>

namespace zdm {

DocumentReader::DocumentReader(const std::filesystem::path& path) : name_(ToUtf8(WideName(path))) {
  const DWORD mode = STGM_READ | STGM_SHARE_DENY_WRITE;
  Check(OpenStorage(WideName(path).c_str(), mode, root_.Out()), name_);
  ReadVersion();
  ReadIndex();
}

void DocumentReader::Damaged(const std::string& what) const {
  throw DocumentError(DocumentFault::kDamaged, STG_E_DOCFILECORRUPT,
                      name_ + ": damaged (" + what + ")");
}

std::vector<BYTE> DocumentReader::ReadStream(const OLECHAR* name, ULONG checksum) {
  std::vector<BYTE> bytes;
  const HRESULT result = ReadBytes(root_.Get(), name, &bytes);
  if (result == STG_E_FILENOTFOUND) Damaged("no stream " + ToUtf8(name));
  Check(result, name_);
  if (Crc32c(bytes) != checksum) Damaged("checksum of stream " + ToUtf8(name));
  return bytes;
}

void DocumentReader::ReadVersion() {
  std::vector<BYTE> bytes;
  const HRESULT result = ReadBytes(root_.Get(), kVersionStream, &bytes);
  const bool isOurs = SUCCEEDED(result) && bytes.size() >= 12 &&
                      std::ranges::equal(kMagic, std::span(bytes).first(8));
  if (!isOurs) {
    STATSTG stat = {};
    if (FAILED(root_->Stat(&stat, STATFLAG_NONAME)) ||
        !(stat.clsid == ClassRow<CZDocument>::kClassID)) {
      throw DocumentError(DocumentFault::kNotDocument, STG_E_FILEALREADYEXISTS,
                          name_ + ": not a document");
    }
    Damaged("version record");
  }
  std::memcpy(&version_, bytes.data(), std::min(bytes.size(), sizeof(version_)));
  if (version_.version > kFormatVersion) {
    throw DocumentError(DocumentFault::kNewerFormat, STG_E_OLDFORMAT,
                        name_ + ": written in format " + std::to_string(version_.version) +
                            "; this version of the library reads up to " +
                            std::to_string(kFormatVersion));
  }
  const auto fields =
      std::span<const BYTE>(bytes).first(std::min(bytes.size(), offsetof(VersionRecord, checksum)));
  if (bytes.size() != sizeof(version_) || Crc32c(fields) != version_.checksum) {
    Damaged("version record");
  }
}

void DocumentReader::ReadIndex() {
  const std::vector<BYTE> bytes = ReadStream(kIndexStream, version_.indexChecksum);
  const ULONGLONG count = ULONGLONG{version_.objectCount} + version_.embeddedCount;
  if (bytes.size() != count * sizeof(IndexEntry)) Damaged("length of the index");
  index_.resize(static_cast<std::size_t>(count));
  if (!bytes.empty()) std::memcpy(index_.data(), bytes.data(), bytes.size());
}

DocumentInfo DocumentReader::GetInfo() const {
  DocumentInfo info = {version_.version, version_.idCount, version_.objectCount,
                       version_.embeddedCount};
  ULONG last = ~ULONG{0};
  for (const IndexEntry& entry : index_) {
    if (entry.chunk != last) ++info.chunks;
    last = entry.chunk;
    info.recordBytes += entry.length;
    info.largestRecord = std::max(info.largestRecord, entry.length);
  }
  if (!index_.empty()) {
    const auto [lowest, highest] = std::ranges::minmax(index_, {}, &IndexEntry::id);
    info.lowestId = lowest.id;
    info.highestId = highest.id;
  }
  return info;
}

void DocumentReader::Read(CZDocument& document, IZProgressMeter* meter) try {
  document.BeginLoading();
  ReadTables(document, meter);
  ReadObjects(document, meter);
  ReadRoot(document);
  document.EndLoading();
  BytesStream order(ReadStream(kOrderStream, version_.orderChecksum));
  if (!LoadOrder(document, StreamOver(order))) Damaged("order of managers");
  document.GetOIDManager()->SetProgressMeter(nullptr);
} catch (const CAtlException& failure) {
  throw ErrorOf(failure.m_hr, name_);
}

void DocumentReader::ReadTables(CZDocument& document, IZProgressMeter* meter) {
  COIDManager& ids = *document.GetOIDManager();
  ids.SetProgressMeter(meter);
  BytesStream table(ReadStream(kIDsStream, version_.idsChecksum));
  const bool isComplete = ids.Load(StreamOver(table));
  if (!isComplete || ids.GetOIDs().size() != version_.idCount) Damaged("ID table");
  if (!std::ranges::is_sorted(ids.GetOIDs(), {}, &OID::ID)) ids.ReSort();

  BytesStream paths(ReadStream(kPathsStream, version_.pathsChecksum));
  if (!document.GetPIDManager()->Load(StreamOver(paths), &ids)) Damaged("path table");
}

void DocumentReader::ReadObjects(CZDocument& document, IZProgressMeter* meter) {
  const auto load = [&](Entries entries, std::vector<BYTE> bytes) {
    LoadChunk(document, entries, std::move(bytes));
    if (meter != nullptr) meter->Step(static_cast<LONG>(entries.size()));
    return true;
  };
  const auto objects = Entries(index_).first(version_.objectCount);
  const auto embedded = Entries(index_).subspan(version_.objectCount);
  ReadFolder(kObjectsStorage, 0, objects, load);
  ReadFolder(kEmbeddedStorage, kEmbeddedChunk, embedded, load);
}

bool DocumentReader::HasRecordOf(const GUID& classId) {
  bool isFound = false;
  const auto look = [&](Entries entries, const std::vector<BYTE>& bytes) {
    isFound = std::ranges::any_of(entries, [&](const IndexEntry& entry) {
      return entry.length >= sizeof(GUID) &&
             std::memcmp(&bytes[entry.offset], &classId, sizeof(GUID)) == 0;
    });
    return !isFound;
  };
  ReadFolder(kObjectsStorage, 0, Entries(index_).first(version_.objectCount), look);
  return isFound;
}

void DocumentReader::ReadFolder(const OLECHAR* name, ULONG flag, Entries entries,
                                const std::function<bool(Entries, std::vector<BYTE>)>& take) {
  ChunkReader reader(root_.Get(), name);
  for (ULONG chunk = 0; !entries.empty(); ++chunk) {
    const auto last = std::ranges::find_if(
        entries, [&](const IndexEntry& entry) { return entry.chunk != (chunk | flag); });
    const auto inChunk = entries.first(static_cast<std::size_t>(last - entries.begin()));
    if (inChunk.empty()) Damaged("index");
    std::vector<BYTE> bytes;
    const HRESULT result = reader.Read(chunk, &bytes);
    if (result == STG_E_FILENOTFOUND) Damaged("missing stream of objects");
    Check(result, name_);
    CheckChunk(inChunk, bytes);
    if (!take(inChunk, std::move(bytes))) return;
    entries = entries.subspan(inChunk.size());
  }
}

/// The records tile the stream.
void DocumentReader::CheckChunk(Entries entries, std::span<const BYTE> bytes) const {
  ULONGLONG end = 0;
  for (const IndexEntry& entry : entries) {
    if (entry.offset != end || entry.length > bytes.size() - end) Damaged("index");
    end += entry.length;
    if (Crc32c(bytes.subspan(entry.offset, entry.length)) != entry.checksum) {
      Damaged("checksum of object " + std::to_string(entry.id));
    }
  }
  if (end != bytes.size()) Damaged("length of a stream of objects");
}

void DocumentReader::LoadChunk(CZDocument& document, Entries entries, std::vector<BYTE> bytes) {
  BytesStream content(std::move(bytes));
  const std::span<const BYTE> all = content.bytes;
  const auto stream = StreamOver(content);
  for (const IndexEntry& entry : entries) {
    const auto record = all.subspan(entry.offset, entry.length);
    const bool isLoaded = (entry.chunk & kEmbeddedChunk) != 0
                              ? LoadFrame(document, entry.id, record)
                              : LoadObject(document, entry.id, entry.offset, record, stream);
    if (!isLoaded) Damaged("object record");
  }
}

void DocumentReader::ReadRoot(CZDocument& document) {
  BytesStream record(ReadStream(kRootStream, version_.rootChecksum));
  document.Load(StreamOver(record), &document);
}

}  // namespace zdm
