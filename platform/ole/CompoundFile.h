// The parts a compound file is made of, read from bytes that nobody vouches for: the header, a
// sector, a directory entry, the order of names. Nothing here follows a chain or trusts a number
// further than its own field; CompoundFileCheck.h judges a whole file.
#pragma once

#include "platform/ole/ole.h"

#include <string_view>

namespace zdm {

constexpr ULONG kMaxSector = 0xFFFFFFFA;    // sector numbers end here; the rest are marks
constexpr ULONG kDifatSector = 0xFFFFFFFC;  // mark: holds places of the allocation table
constexpr ULONG kFatSector = 0xFFFFFFFD;    // mark: holds a piece of the allocation table
constexpr ULONG kEndOfChain = 0xFFFFFFFE;
constexpr ULONG kFreeSector = 0xFFFFFFFF;
constexpr ULONG kNoEntry = 0xFFFFFFFF;

constexpr ULONG kCompoundHeaderSize = 512;
constexpr ULONG kHeaderFatPlaces = 109;  // places of the allocation table kept in the header
constexpr ULONG kDirectoryEntrySize = 128;
constexpr ULONG kMiniSectorSize = 64;
constexpr ULONG kMiniStreamCutoff = 4096;  // a smaller stream lives in the mini stream
constexpr ULONG kMaxElementName = 31;      // units, without the terminator

enum CompoundEntryType : BYTE {
  kEntryFree = 0,
  kEntryStorage = 1,
  kEntryStream = 2,
  kEntryRoot = 5,
};

struct CompoundHeader {
  USHORT majorVersion;     // 3 or 4
  USHORT byteOrder;        // 0xFFFE
  USHORT sectorShift;      // 9 in version 3, 12 in version 4
  USHORT miniShift;        // 6
  ULONG directorySectors;  // 0 in version 3
  ULONG fatSectors;
  ULONG directoryStart;
  ULONG miniCutoff;
  ULONG miniFatStart;
  ULONG miniFatSectors;
  ULONG difatStart;
  ULONG difatSectors;
};

struct CompoundEntry {
  OLECHAR name[32];
  USHORT nameBytes;  // as stored: bytes with the terminator
  BYTE type;
  ULONG left;
  ULONG right;
  ULONG child;
  CLSID clsid;
  ULONG start;
  ULONGLONG size;

  /// The units before the terminator; empty when the stored length is not 2 to 64 bytes.
  ZDM_API std::basic_string_view<OLECHAR> Name() const;
};

/// Where a file's bytes are read from, piece by piece.
class ZDM_INTERFACE CompoundBytes {
 public:
  virtual ~CompoundBytes() = default;
  virtual ULONGLONG Size() const = 0;
  /// Reads `size` bytes at `place`, all or false: what has a size can still fail, or be cut
  /// meanwhile.
  virtual bool Read(ULONGLONG place, void* data, std::size_t size) const = 0;
};

/// Bytes in memory, borrowed.
class ZDM_API CompoundMemory final : public CompoundBytes {
 public:
  CompoundMemory(const BYTE* data, ULONGLONG size) : data_(data), size_(size) {}

  ULONGLONG Size() const override { return size_; }
  bool Read(ULONGLONG place, void* data, std::size_t size) const override;

 private:
  const BYTE* data_;
  ULONGLONG size_;
};

/// A compound file's bytes as header and sectors. The bytes are borrowed.
class CompoundImage {
 public:
  /// Reads the bytes of the header.
  ZDM_API explicit CompoundImage(const CompoundBytes& bytes);

  /// The bytes of the header, as far as there are any, could be read.
  bool IsReadable() const { return readable_; }
  /// The first eight bytes are those of a compound file.
  ZDM_API bool HasSignature() const;
  /// The header's fields, as they are. False when the file is too short for one.
  ZDM_API bool ReadHeader(CompoundHeader* header) const;
  /// The place of the allocation table's piece `index` (below 109) as the header has it.
  ZDM_API ULONG HeaderFatPlace(ULONG index) const;

  /// Divides what follows the header into sectors of 1 << `shift` bytes (9 or 12). A last sector
  /// that is not all there is none.
  ZDM_API void SetSectorShift(USHORT shift);
  ULONG SectorSize() const { return ULONG{1} << shift_; }
  ULONG SectorCount() const { return sectorCount_; }
  ULONGLONG SectorPlace(ULONG sector) const { return (ULONGLONG{sector} + 1) << shift_; }
  /// Reads the SectorSize() bytes of a sector below SectorCount().
  bool ReadSector(ULONG sector, BYTE* to) const {
    return bytes_.Read(SectorPlace(sector), to, SectorSize());
  }

 private:
  const CompoundBytes& bytes_;
  BYTE header_[kCompoundHeaderSize] = {};
  bool readable_ = false;
  USHORT shift_ = 9;
  ULONG sectorCount_ = 0;
};

/// A little-endian number at `bytes`.
ZDM_API USHORT ReadU16(const BYTE* bytes);
ZDM_API ULONG ReadU32(const BYTE* bytes);

/// The 128 bytes of a directory entry, as they are.
ZDM_API CompoundEntry ReadCompoundEntry(const BYTE* bytes);

/// The upper case of one unit, as names are compared; letters outside ASCII never become ASCII.
ZDM_API OLECHAR UpperUnit(OLECHAR unit);

/// The order of names in a storage: shorter first, then upper-case units. Negative, 0 or positive.
ZDM_API int CompareElementNames(std::basic_string_view<OLECHAR> left,
                                std::basic_string_view<OLECHAR> right);

/// 1 to 31 units, none of / \ : ! and zero, every surrogate with its other half.
ZDM_API bool IsElementName(std::basic_string_view<OLECHAR> name);
/// The same without regard to / \ : !, which other programs have been seen to use.
ZDM_API bool IsReadableElementName(std::basic_string_view<OLECHAR> name);

}  // namespace zdm
