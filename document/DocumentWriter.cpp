#include "document/DocumentWriter.h"

#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/DocumentError.h"
#include "document/EmbeddedFrame.h"
#include "document/ManagerOrder.h"
#include "document/PathText.h"
#include "document/RecordChunks.h"
#include "platform/ole/CAtlException.h"
#include "platform/ole/StorageReplace.h"
#include "zdm/identity/OID.h"

#include <cstring>
#include <exception>
#include <new>
#include <string>

namespace zdm {

void DocumentWriter::Write(const std::filesystem::path& path) try {
  const WideString name = WideName(path);
  const std::string text = ToUtf8(name);  // nothing fails once the file is in place
  std::exception_ptr failure;
  const HRESULT result = ReplaceStorage(name.c_str(), [&](IStorage* root) {
    try {
      Fill(root);
      return S_OK;
    } catch (...) {
      failure = std::current_exception();
      return E_FAIL;
    }
  });
  if (failure != nullptr) std::rethrow_exception(failure);
  Check(result, text);
} catch (const std::bad_alloc&) {
  throw ErrorOf(E_OUTOFMEMORY, ToUtf8(WideName(path)));
}

void DocumentWriter::Fill(IStorage* root) {
  Check(root->SetClass(ClassRow<CZDocument>::kClassID), "document");
  version_.version = kFormatVersion;
  std::memcpy(version_.magic, kMagic, sizeof(kMagic));
  WriteObjects(root);

  COIDManager& ids = *document_.GetOIDManager();
  version_.idCount = static_cast<ULONG>(ids.GetValidOIDCount());
  version_.idsChecksum = WriteStream(root, kIDsStream, [&](IZStream* stream) { ids.Save(stream); });
  version_.pathsChecksum = WriteStream(
      root, kPathsStream, [&](IZStream* stream) { document_.GetPIDManager()->Save(stream); });
  version_.rootChecksum =
      WriteStream(root, kRootStream, [&](IZStream* stream) { document_.Save(stream, &document_); });
  version_.indexChecksum = WriteStream(root, kIndexStream, [&](IZStream* stream) {
    stream->Write(index_.data(), static_cast<ULONG>(index_.size() * sizeof(IndexEntry)));
  });
  version_.orderChecksum =
      WriteStream(root, kOrderStream, [&](IZStream* stream) { SaveOrder(ids, document_, stream); });

  const std::span<const BYTE> version(reinterpret_cast<const BYTE*>(&version_), sizeof(version_));
  version_.checksum = Crc32c(version.first(offsetof(VersionRecord, checksum)));
  Check(WriteBytes(root, kVersionStream, version), "document");
}

/// Answers the checksum of what `write` wrote.
ULONG DocumentWriter::WriteStream(IStorage* root, const OLECHAR* name,
                                  const std::function<void(IZStream*)>& write) {
  BytesStream bytes;
  const auto stream = StreamOver(bytes);
  write(stream);
  stream->GetIStream();  // flushed
  Check(WriteBytes(root, name, bytes.bytes), "document");
  return Crc32c(bytes.bytes);
}

/// In the order of the ID table.
void DocumentWriter::WriteObjects(IStorage* root) {
  ChunkWriter objects(root, kObjectsStorage, 0);
  ChunkWriter embedded(root, kEmbeddedStorage, kEmbeddedChunk);
  FrameKinds kinds;
  if (meter_ != nullptr) meter_->SetRange(document_.GetOIDManager()->GetValidOIDCount());
  for (const OID* oid : document_.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    if (kinds.Of(oid->Object) == FrameKind::kNone) {
      oid->Object->Save(objects.Begin(), &document_);
      objects.End(oid->ID);
    } else {
      SaveFrame(document_, oid->Object, embedded.Begin());
      embedded.End(oid->ID);
    }
    if (meter_ != nullptr) meter_->Step(1);
  }
  objects.Finish();
  embedded.Finish();
  version_.objectCount = static_cast<ULONG>(objects.Entries().size());
  version_.embeddedCount = static_cast<ULONG>(embedded.Entries().size());
  index_ = objects.Entries();
  index_.insert(index_.end(), embedded.Entries().begin(), embedded.Entries().end());
}

}  // namespace zdm
