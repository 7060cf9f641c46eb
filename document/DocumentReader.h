// Reads a document's file, and refuses one of which a byte is not as it was saved.
#pragma once

#include "document/DocumentFormat.h"
#include "document/RecordChunks.h"
#include "platform/ole/OleRef.h"

#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

class CZDocument;
struct IZProgressMeter;

namespace zdm {

/// What a document's file says of itself without any object being loaded.
struct DocumentInfo {
  ULONG formatVersion = 0;
  ULONG ids = 0;
  ULONG objects = 0;
  ULONG embedded = 0;
  ULONG chunks = 0;           // streams of records
  ULONGLONG recordBytes = 0;  // of all records
  ULONG largestRecord = 0;    // in bytes
  LONG lowestId = 0;          // 0 without objects
  LONG highestId = 0;
};

/// Of every function what fails throws DocumentError, or std::bad_alloc.
class DocumentReader {
 public:
  /// Opens the file and reads its version and index.
  explicit DocumentReader(const std::filesystem::path& path);

  DocumentInfo GetInfo() const;
  /// Whether a record below "Objects" is of that class. Loads no object: looks at the identifiers
  /// that the records begin with, up to the first that is it.
  bool HasRecordOf(const GUID& classId);
  /// @param document  empty. @param meter  may be null.
  void Read(CZDocument& document, IZProgressMeter* meter);

 private:
  using Entries = std::span<const IndexEntry>;

  std::vector<BYTE> ReadStream(const OLECHAR* name, ULONG checksum);
  void ReadVersion();
  void ReadIndex();
  void ReadTables(CZDocument& document, IZProgressMeter* meter);
  void ReadObjects(CZDocument& document, IZProgressMeter* meter);
  /// Gives each stream with its entries, in order, until `take` answers false. Each is checked.
  void ReadFolder(const OLECHAR* name, ULONG flag, Entries entries,
                  const std::function<bool(Entries, std::vector<BYTE>)>& take);
  void CheckChunk(Entries entries, std::span<const BYTE> bytes) const;
  void LoadChunk(CZDocument& document, Entries entries, std::vector<BYTE> bytes);
  void ReadRoot(CZDocument& document);
  [[noreturn]] void Damaged(const std::string& what) const;

  std::string name_;  // for messages
  OleRef<IStorage> root_;
  VersionRecord version_ = {};
  std::vector<IndexEntry> index_;
};

}  // namespace zdm
