#include "platform/ole/CompoundFile.h"

#include <algorithm>
#include <cstring>

#if !defined(_WIN32)
#include <unicode/uchar.h>
#endif

namespace zdm {

namespace {

constexpr BYTE kSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};

// Header, 512 bytes, little-endian.
//   offset  size  field
//        0     8  signature
//        8    16  class id, not used
//       24     2  minor version, not used
//       26     2  major version
//       28     2  byte order
//       30     2  sector shift
//       32     2  mini sector shift
//       34     6  zero
//       40     4  number of directory sectors
//       44     4  number of allocation table (FAT) sectors
//       48     4  first directory sector
//       52     4  transaction number, not used
//       56     4  mini stream cutoff
//       60     4  first mini FAT sector
//       64     4  number of mini FAT sectors
//       68     4  first sector with further FAT places (DIFAT)
//       72     4  number of DIFAT sectors
//       76   436  the first 109 places of FAT sectors
constexpr ULONG kFatPlacesOffset = 76;

bool IsHighSurrogate(OLECHAR unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(OLECHAR unit) { return (unit & 0xFC00) == 0xDC00; }

}  // namespace

USHORT ReadU16(const BYTE* bytes) { return static_cast<USHORT>(bytes[0] | bytes[1] << 8); }

ULONG ReadU32(const BYTE* bytes) {
  return ULONG{bytes[0]} | ULONG{bytes[1]} << 8 | ULONG{bytes[2]} << 16 | ULONG{bytes[3]} << 24;
}

std::basic_string_view<OLECHAR> CompoundEntry::Name() const {
  if (nameBytes < 2 || nameBytes > sizeof(name)) return {};
  return {name, static_cast<std::size_t>(nameBytes / 2 - 1)};
}

bool CompoundMemory::Read(ULONGLONG place, void* data, std::size_t size) const {
  if (place > size_ || size > size_ - place) return false;
  if (size != 0) std::memcpy(data, data_ + place, size);
  return true;
}

CompoundImage::CompoundImage(const CompoundBytes& bytes) : bytes_(bytes) {
  const auto size = std::min<ULONGLONG>(bytes.Size(), sizeof(header_));
  readable_ = bytes.Read(0, header_, static_cast<std::size_t>(size));
}

bool CompoundImage::HasSignature() const {
  return bytes_.Size() >= sizeof(kSignature) &&
         std::memcmp(header_, kSignature, sizeof(kSignature)) == 0;
}

bool CompoundImage::ReadHeader(CompoundHeader* header) const {
  if (bytes_.Size() < kCompoundHeaderSize) return false;
  header->majorVersion = ReadU16(header_ + 26);
  header->byteOrder = ReadU16(header_ + 28);
  header->sectorShift = ReadU16(header_ + 30);
  header->miniShift = ReadU16(header_ + 32);
  header->directorySectors = ReadU32(header_ + 40);
  header->fatSectors = ReadU32(header_ + 44);
  header->directoryStart = ReadU32(header_ + 48);
  header->miniCutoff = ReadU32(header_ + 56);
  header->miniFatStart = ReadU32(header_ + 60);
  header->miniFatSectors = ReadU32(header_ + 64);
  header->difatStart = ReadU32(header_ + 68);
  header->difatSectors = ReadU32(header_ + 72);
  return true;
}

ULONG CompoundImage::HeaderFatPlace(ULONG index) const {
  return ReadU32(header_ + kFatPlacesOffset + std::size_t{4} * index);
}

void CompoundImage::SetSectorShift(USHORT shift) {
  shift_ = shift;
  const ULONGLONG whole = bytes_.Size() >> shift;  // the header takes the place of one sector
  sectorCount_ = whole == 0 ? 0 : static_cast<ULONG>(std::min<ULONGLONG>(whole - 1, kMaxSector));
}

// Directory entry, 128 bytes, little-endian.
//   offset  size  field
//        0    64  name, UTF-16 with terminator
//       64     2  length of the name in bytes, with terminator
//       66     1  type
//       67     1  colour in the tree of siblings, not used
//       68     4  left sibling
//       72     4  right sibling
//       76     4  first child of a storage (the top of its tree)
//       80    16  class id
//       96     4  state bits
//      100    16  times of creation and change
//      116     4  first sector
//      120     8  size in bytes
CompoundEntry ReadCompoundEntry(const BYTE* bytes) {
  CompoundEntry entry;
  for (std::size_t i = 0; i < std::size(entry.name); ++i) {
    entry.name[i] = static_cast<OLECHAR>(ReadU16(bytes + 2 * i));
  }
  entry.nameBytes = ReadU16(bytes + 64);
  entry.type = bytes[66];
  entry.left = ReadU32(bytes + 68);
  entry.right = ReadU32(bytes + 72);
  entry.child = ReadU32(bytes + 76);
  std::memcpy(&entry.clsid, bytes + 80, sizeof(CLSID));
  entry.start = ReadU32(bytes + 116);
  entry.size = ReadU32(bytes + 120) | static_cast<ULONGLONG>(ReadU32(bytes + 124)) << 32;
  return entry;
}

OLECHAR UpperUnit(OLECHAR unit) {
  if (unit < 0x80) return unit >= 'a' && unit <= 'z' ? static_cast<OLECHAR>(unit - 32) : unit;
#if defined(_WIN32)
  OLECHAR upper = unit;
  CharUpperBuffW(&upper, 1);
  return upper < 0x80 ? unit : upper;
#else
  const UChar32 upper = u_toupper(unit);
  return upper < 0x80 || upper > 0xFFFF ? unit : static_cast<OLECHAR>(upper);
#endif
}

int CompareElementNames(std::basic_string_view<OLECHAR> left,
                        std::basic_string_view<OLECHAR> right) {
  if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (left[i] == right[i]) continue;
    const OLECHAR a = UpperUnit(left[i]);
    const OLECHAR b = UpperUnit(right[i]);
    if (a != b) return a < b ? -1 : 1;
  }
  return 0;
}

bool IsReadableElementName(std::basic_string_view<OLECHAR> name) {
  if (name.empty() || name.size() > kMaxElementName) return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] == 0 || IsLowSurrogate(name[i])) return false;
    if (!IsHighSurrogate(name[i])) continue;
    if (i + 1 == name.size() || !IsLowSurrogate(name[i + 1])) return false;
    ++i;
  }
  return true;
}

bool IsElementName(std::basic_string_view<OLECHAR> name) {
  constexpr OLECHAR kForbidden[] = OLESTR("/\\:!");
  return IsReadableElementName(name) &&
         name.find_first_of(kForbidden) == std::basic_string_view<OLECHAR>::npos;
}

}  // namespace zdm
