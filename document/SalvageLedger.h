// The account of a salvage: what became of every object and of every byte of the file.
#pragma once

#include "platform/ole/ole.h"

#include <string>
#include <vector>

namespace zdm {

enum class SalvageStage {
  kSound,      // nothing was wrong
  kStreams,    // the container is sound, what its streams hold is not
  kContainer,  // the container is damaged
  kBytes,      // nothing tells that there was a container
};

enum class ObjectFate {
  kRecovered,    // as it was saved, as far as a checksum was there to tell (isUnchecked)
  kAbsentClass,  // kept as it stands: its class is not available or could not read it
  kDoubtful,     // loaded from a record that does not fit its checksum
  kLost,         // only its ID is known, from a table or from those who refer to it
};

struct SalvagedObject {
  LONG id;
  ObjectFate fate;
  bool isMended;     // one bit of its record was flipped back
  bool isUnchecked;  // no checksum of its record was found
  bool isOwnerless;  // without a manager that is known to be its own; see Recovered.h
  LONG ownerId;      // as stored; 0 of a lost object
  GUID classId;      // likewise
  ULONGLONG place;   // of the record's first byte in the file
  ULONGLONG length;  // of the record
};

enum class TableState {
  kSound,
  kMended,     // one bit was flipped back
  kUnchecked,  // used as far as it can be read
  kLost,
};

struct SalvagedTable {
  const char* name;
  TableState state;
};

enum class RangeKind : BYTE {
  kUnknown,    // nothing is known of these bytes
  kContainer,  // header, allocation tables, directory
  kTables,     // tables of the document
  kRecords,    // of objects that were taken
  kFree,       // in no use
  kDamaged,    // a record should be here that is not as it was saved
};

struct FileRange {
  ULONGLONG begin;
  ULONGLONG end;  // one past the last byte
  RangeKind kind;
};

struct SalvageLedger {
  SalvageStage stage = SalvageStage::kSound;
  std::string containerFault;  // a few words
  ULONGLONG fileSize = 0;
  std::vector<SalvagedTable> tables;
  std::vector<SalvagedObject> objects;  // by ID
  std::vector<FileRange> ranges;        // from 0 to fileSize, without gaps

  std::size_t Count(ObjectFate fate) const;
  std::size_t CountOwnerless() const;
  /// One JSON object: stage, container (what is wrong with it), size, counts (by fate, and
  /// ownerless), tables (name, state), objects (id, fate; mended, unchecked and ownerless where
  /// true; but for lost ones owner, class, at, length) and ranges (from, to, kind).
  std::string ToJson() const;
};

}  // namespace zdm
