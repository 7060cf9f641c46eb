// The parts of a document's file; docs/format.md describes every byte.
#pragma once

#include "platform/ole/ole.h"

#include <cstdio>
#include <string>

namespace zdm {

constexpr ULONG kFormatVersion = 1;

// Elements of the file's root storage.
constexpr const OLECHAR* kVersionStream = OLESTR("Version");
constexpr const OLECHAR* kIDsStream = OLESTR("IDs");
constexpr const OLECHAR* kPathsStream = OLESTR("Paths");
constexpr const OLECHAR* kRootStream = OLESTR("Root");
constexpr const OLECHAR* kIndexStream = OLESTR("Index");
constexpr const OLECHAR* kOrderStream = OLESTR("Order");
constexpr const OLECHAR* kObjectsStorage = OLESTR("Objects");
constexpr const OLECHAR* kEmbeddedStorage = OLESTR("Embedded");

constexpr ULONG kChunkSize = ULONG{1} << 20;  // of a stream of records; a longer record has its own
constexpr ULONG kFanOut = 256;                // streams of a folder, and folders
constexpr ULONG kMaxChunks = kFanOut * kFanOut;
constexpr ULONG kEmbeddedChunk = 0x80000000;  // in IndexEntry::chunk: below kEmbeddedStorage

constexpr BYTE kMagic[8] = {0x5A, 0x44, 0x4D, 0x0D, 0x0A, 0x1A, 0x0A, 0x00};

/// The stream "Version".
struct VersionRecord {
  BYTE magic[8];
  ULONG version;
  ULONG idCount;        // entries of the ID table
  ULONG objectCount;    // records below "Objects"
  ULONG embeddedCount;  // records below "Embedded"
  ULONG idsChecksum;    // of the streams, CRC-32C; 0 for one that is not there
  ULONG pathsChecksum;
  ULONG rootChecksum;
  ULONG indexChecksum;
  ULONG orderChecksum;
  ULONG checksum;  // of the fields before
};
static_assert(sizeof(VersionRecord) == 48);

/// An entry of the stream "Index": where the record of an object is.
struct IndexEntry {
  LONG id;
  ULONG chunk;     // number of the stream; with kEmbeddedChunk those below "Embedded"
  ULONG offset;    // in it
  ULONG length;    // of the record, frame included
  ULONG checksum;  // CRC-32C of the record
};
static_assert(sizeof(IndexEntry) == 20);

/// Two hex digits: the name of a folder or of a stream in it.
inline std::basic_string<OLECHAR> HexName(ULONG number) {
  constexpr const OLECHAR* kDigits = OLESTR("0123456789ABCDEF");
  return {kDigits[(number >> 4) & 15], kDigits[number & 15]};
}

}  // namespace zdm
