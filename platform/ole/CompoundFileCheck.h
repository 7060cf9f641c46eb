// The judgement over a compound file before any library sees its bytes. It is strict: every number
// is followed to what it points at, no sector and no directory entry is used twice, every stream
// has the bytes its size promises. A file that passes can be read by plain loops that end. Work
// grows with the size of the file, memory is below twice its size, and nothing recurses. What is
// refused here is left to a reader that gets streams out of damaged files.
#pragma once

#include "platform/ole/CompoundFile.h"
#include "platform/ole/ole.h"

#include <vector>

namespace zdm {

enum class CompoundFault {
  kNone,
  kNotCompound,  // the signature is another one, or the file is empty
  kHeader,       // version, sector sizes, byte order, or cut short
  kFatPlaces,    // the list of FAT sectors: count, chain, place past the file
  kDirectory,    // the directory's chain, its first entry
  kName,         // length, terminator, zeros inside, half a surrogate pair
  kEntry,        // type, or a stream with children
  kTree,         // an entry reached twice, past the end, out of order, or never; equal names
  kDepth,        // storages nested, or siblings chained, deeper than is read
  kMiniStream,   // the mini stream, its table, or their sizes
  kChain,        // a stream's chain leaves the file, crosses another, or is too short
  kUnreadable,   // the bytes could not be read, or the file was cut meanwhile
};

/// A few English words for a report.
ZDM_API const char* DescribeFault(CompoundFault fault);

struct CompoundFileReport {
  CompoundFault fault = CompoundFault::kNone;
  ULONG place = 0;     // the directory entry or the sector where it showed
  ULONG storages = 0;  // without the root
  ULONG streams = 0;
};

/// Storages below storages, the root not counted. Nothing deeper is opened.
constexpr ULONG kMaxStorageDepth = 1024;
/// A storage whose elements lie deeper than this on average in its tree of siblings is refused:
/// finding an element walks down that tree. (A sound tree of a million elements has 20 levels.)
constexpr ULONG kMaxSiblingDepth = 1024;

/// What a sound file is made of: enough to find every byte of every stream.
struct CompoundLayout {
  struct Element {
    ULONG entry;   // index in `entries`
    ULONG parent;  // the storage's index in `entries`
  };

  ULONG sectorShift = 9;
  std::vector<ULONG> fat;
  std::vector<ULONG> miniFat;
  std::vector<ULONG> miniStream;  // the sectors of the mini stream, in order
  std::vector<CompoundEntry> entries;
  std::vector<Element> elements;  // a storage before its elements; siblings in their order
};

/// Checks the file with these bytes; its header and tables are read once, its streams not at all.
/// S_OK; STG_E_INVALIDHEADER for what is no compound file at all; STG_E_DOCFILECORRUPT for a
/// damaged one; STG_E_READFAULT; E_OUTOFMEMORY. `report` and `layout` may be null; `layout` is
/// complete only with S_OK.
ZDM_API HRESULT CheckCompoundFile(const CompoundBytes& bytes, CompoundFileReport* report,
                                  CompoundLayout* layout = nullptr);
/// The same for `size` bytes at `data`.
ZDM_API HRESULT CheckCompoundFile(const BYTE* data, ULONGLONG size, CompoundFileReport* report,
                                  CompoundLayout* layout = nullptr);

}  // namespace zdm
