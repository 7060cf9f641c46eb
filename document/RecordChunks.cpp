#include "document/RecordChunks.h"

#include "document/Crc32c.h"
#include "document/DocumentError.h"

#include <algorithm>

namespace zdm {

namespace {

constexpr DWORD kRead = STGM_READ | STGM_SHARE_EXCLUSIVE;
constexpr DWORD kMake = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr ULONGLONG kMaxStream = 0x7FFFFFFF;  // what a stream of a compound file holds

/// A new storage whose times are zero, so that the same document gives the same file.
HRESULT MakeFolder(IStorage* storage, const OLECHAR* name, OleRef<IStorage>* out) {
  const HRESULT result = storage->CreateStorage(name, kMake, 0, 0, out->Out());
  const FILETIME none = {};
  if (SUCCEEDED(result)) storage->SetElementTimes(name, &none, &none, &none);
  return result;
}

}  // namespace

HRESULT ReadBytes(IStorage* storage, const OLECHAR* name, std::vector<BYTE>* out) {
  out->clear();
  OleRef<IStream> stream;
  HRESULT result = storage->OpenStream(name, nullptr, kRead, 0, stream.Out());
  STATSTG stat = {};
  if (SUCCEEDED(result)) result = stream->Stat(&stat, STATFLAG_NONAME);
  if (FAILED(result)) return result;
  if (stat.cbSize.QuadPart > kMaxStream) return STG_E_DOCFILECORRUPT;
  out->resize(static_cast<std::size_t>(stat.cbSize.QuadPart));
  for (std::size_t done = 0; done < out->size();) {
    ULONG read = 0;
    result = stream->Read(out->data() + done, static_cast<ULONG>(out->size() - done), &read);
    if (FAILED(result)) return result;
    if (read == 0) return STG_E_READFAULT;
    done += read;
  }
  return S_OK;
}

HRESULT WriteBytes(IStorage* storage, const OLECHAR* name, std::span<const BYTE> bytes) {
  OleRef<IStream> stream;
  HRESULT result = storage->CreateStream(name, kMake, 0, 0, stream.Out());
  if (FAILED(result) || bytes.empty()) return result;
  if (bytes.size() > kMaxStream) return STG_E_DOCFILETOOLARGE;
  const auto size = static_cast<ULONG>(bytes.size());
  ULONG written = 0;
  result = stream->Write(bytes.data(), size, &written);
  return SUCCEEDED(result) && written != size ? STG_E_MEDIUMFULL : result;
}

HRESULT OpenFolder(IStorage* storage, const OLECHAR* name, OleRef<IStorage>* out) {
  return storage->OpenStorage(name, nullptr, kRead, nullptr, 0, out->Out());
}

ChunkWriter::ChunkWriter(IStorage* root, const OLECHAR* name, ULONG flag)
    : root_(root), name_(name), flag_(flag), stream_(StreamOver(bytes_)) {}

IZStream* ChunkWriter::Begin() {
  start_ = static_cast<ULONG>(stream_->GetPosition());
  return stream_;
}

void ChunkWriter::End(LONG id) {
  const ULONGLONG end = stream_->GetPosition();
  if (end > kMaxStream) throw ErrorOf(STG_E_DOCFILETOOLARGE, "record");
  if (end == start_) return;
  const auto length = static_cast<ULONG>(end) - start_;
  if (end > kChunkSize && start_ != 0) {
    Flush(start_);
    start_ = 0;
  }
  entries_.push_back({id, chunk_ | flag_, start_, length, 0});
}

void ChunkWriter::Finish() {
  const auto size = static_cast<ULONG>(stream_->GetPosition());
  if (size != 0) Flush(size);
}

/// Writes the first `size` bytes as a stream; what follows them begins the next one.
void ChunkWriter::Flush(ULONG size) {
  stream_->GetIStream();  // flushed
  if (chunk_ == kMaxChunks) throw ErrorOf(STG_E_DOCFILETOOLARGE, "document");
  if (!storage_) Check(MakeFolder(root_, name_, &storage_), "document");
  if (chunk_ % kFanOut == 0) {
    Check(MakeFolder(storage_.Get(), HexName(chunk_ / kFanOut).c_str(), &folder_), "document");
  }
  const auto written = std::span<const BYTE>(bytes_.bytes).first(size);
  for (; firstOfChunk_ < entries_.size(); ++firstOfChunk_) {
    IndexEntry& entry = entries_[firstOfChunk_];
    entry.checksum = Crc32c(written.subspan(entry.offset, entry.length));
  }
  Check(WriteBytes(folder_.Get(), HexName(chunk_ % kFanOut).c_str(), written), "document");
  ++chunk_;
  bytes_.bytes.erase(bytes_.bytes.begin(), bytes_.bytes.begin() + size);
  const bool hadHugeRecord = bytes_.bytes.capacity() > std::size_t{4} * kChunkSize;
  if (hadHugeRecord) bytes_.bytes.shrink_to_fit();
  bytes_.position = bytes_.bytes.size();
}

HRESULT ChunkReader::Read(ULONG chunk, std::vector<BYTE>* out) {
  out->clear();
  HRESULT result = S_OK;
  if (!storage_) result = OpenFolder(root_, name_, &storage_);
  if (SUCCEEDED(result) && folderNumber_ != chunk / kFanOut) {
    folderNumber_ = ~ULONG{0};
    result = OpenFolder(storage_.Get(), HexName(chunk / kFanOut).c_str(), &folder_);
    if (SUCCEEDED(result)) folderNumber_ = chunk / kFanOut;
  }
  if (FAILED(result)) return result;
  return ReadBytes(folder_.Get(), HexName(chunk % kFanOut).c_str(), out);
}

}  // namespace zdm
