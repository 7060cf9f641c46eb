// A compound file as its bytes stand, sound or not. From a sound one the streams; from a damaged
// one the chains of sectors that can be followed, each as one run of bytes: a sector whose
// successor is not known is taken to be followed by the next one, since most streams are written
// that way. The tables that say where things are can be lost, wholly or in part; so can the header
// and the directory. Work grows with the size of the file, and memory is a few times its size.
#pragma once

#include "platform/ole/CompoundFileCheck.h"

#include <span>
#include <string>
#include <vector>

namespace zdm {

/// Bytes that belong together, and where in the file they stand.
struct RawRun {
  struct Piece {
    std::size_t from;   // in `bytes`
    std::size_t place;  // in the file
    std::size_t length;
  };

  std::basic_string<OLECHAR> name;  // path of a stream, "Objects/00/01"; empty for a chain
  std::vector<BYTE> bytes;
  std::vector<Piece> pieces;  // one after the other

  /// Appends bytes of the file.
  void Append(std::span<const BYTE> file, std::size_t place, std::size_t length);
};

class RawContainer {
 public:
  /// @param file  borrowed.
  explicit RawContainer(std::span<const BYTE> file);

  bool IsSound() const { return fault_ == CompoundFault::kNone; }
  CompoundFault Fault() const { return fault_; }
  /// Something was found by which bytes are known to be a container's: header, table or directory.
  bool HasStructure() const { return hasStructure_; }
  /// Of a sound container its streams; of a damaged one the chains.
  const std::vector<RawRun>& Runs() const { return runs_; }
  /// What may be the stream of that path (of a damaged container: of that last name).
  std::vector<RawRun> Find(std::basic_string_view<OLECHAR> name) const;
  /// Bytes of the header, the tables and the directory; and those in no use.
  const std::vector<RawRun::Piece>& Structure() const { return structure_; }
  const std::vector<RawRun::Piece>& Free() const { return free_; }

 private:
  using Sectors = std::vector<ULONG>;

  void TakeStreams(const CompoundLayout& layout);
  void Rebuild();
  void GuessSectorSize();
  void CollectTable();
  void TakeTableSector(ULONG sector, ULONG index);
  bool TableIndexOf(ULONG sector, ULONG* index) const;
  void Link();
  void FollowChains();
  void CollectEntries();
  Sectors ChainFrom(ULONG sector, std::size_t limit) const;
  void AddSmall(const CompoundEntry& entry, std::vector<RawRun>* found) const;

  std::size_t Place(ULONG sector) const { return (std::size_t{sector} + 1) << shift_; }
  std::size_t LengthOf(ULONG sector) const;
  ULONG At(ULONG sector, ULONG index) const { return ReadU32(&file_[Place(sector) + 4 * index]); }
  bool IsWhole(ULONG sector) const { return LengthOf(sector) == std::size_t{1} << shift_; }
  RawRun RunOf(const Sectors& sectors, std::size_t size) const;

  std::span<const BYTE> file_;
  CompoundFault fault_ = CompoundFault::kNone;
  bool hasStructure_ = false;
  USHORT shift_ = 9;
  ULONG count_ = 0;  // of sectors, a cut one included
  std::vector<ULONG> fat_;
  std::vector<bool> isKnown_;      // fat_ has what the file says
  std::vector<bool> isStructure_;  // a table's sector or one of the directory
  std::vector<ULONG> next_;        // kEndOfChain at an end
  std::vector<CompoundEntry> entries_;
  std::vector<RawRun> runs_;
  std::vector<RawRun::Piece> structure_;
  std::vector<RawRun::Piece> free_;
};

}  // namespace zdm
