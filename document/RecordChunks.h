// Records in streams of bounded size: written one after the other, read a stream at a time. A
// damaged place in the file so costs few records.
#pragma once

#include "document/DocumentFormat.h"
#include "document/StreamOver.h"
#include "platform/ole/OleRef.h"

#include <span>
#include <string>
#include <vector>

namespace zdm {

/// The whole stream; STG_E_FILENOTFOUND when there is none. @param out  emptied first.
HRESULT ReadBytes(IStorage* storage, const OLECHAR* name, std::vector<BYTE>* out);
HRESULT WriteBytes(IStorage* storage, const OLECHAR* name, std::span<const BYTE> bytes);

/// Opens a storage inside `storage` for reading.
HRESULT OpenFolder(IStorage* storage, const OLECHAR* name, OleRef<IStorage>* out);

class ChunkWriter {
 public:
  /// Writes below the storage `name` of `root` (borrowed), which is made with the first record.
  /// @param flag  kEmbeddedChunk or 0, for the index.
  ChunkWriter(IStorage* root, const OLECHAR* name, ULONG flag);

  /// Where the next record is to be written, from the stream's position on.
  IZStream* Begin();
  /// The record of object `id` is written. One of no bytes is left out.
  void End(LONG id);
  /// Writes what is left. Throws DocumentError, as End does.
  void Finish();

  const std::vector<IndexEntry>& Entries() const { return entries_; }

 private:
  void Flush(ULONG size);

  IStorage* root_;
  const OLECHAR* name_;
  ULONG flag_;
  OleRef<IStorage> storage_;
  OleRef<IStorage> folder_;
  ULONG chunk_ = 0;
  std::size_t firstOfChunk_ = 0;  // of entries_
  ULONG start_ = 0;               // of the record being written
  BytesStream bytes_;
  ZRefPtr<IZStream> stream_;
  std::vector<IndexEntry> entries_;
};

/// Reads the streams that ChunkWriter wrote.
class ChunkReader {
 public:
  /// @param root  borrowed.
  ChunkReader(IStorage* root, const OLECHAR* name) : root_(root), name_(name) {}
  /// The bytes of stream number `chunk`; in order of their numbers each folder is opened once.
  HRESULT Read(ULONG chunk, std::vector<BYTE>* out);

 private:
  IStorage* root_;
  const OLECHAR* name_;
  OleRef<IStorage> storage_;
  OleRef<IStorage> folder_;
  ULONG folderNumber_ = ~ULONG{0};
};

}  // namespace zdm
