// What can be told of a document from the bytes of its file, sound or not: its tables, and a record
// for each ID. Records are found by the index, as far as there is one, and by their headers. One
// that fits its checksum is taken first; one that fits it with a single bit flipped is mended; one
// without checksum, or that does not fit it, must be loadable. Work is bounded by a number of times
// the size of the file.
#pragma once

#include "document/DocumentFormat.h"
#include "document/RawContainer.h"
#include "document/TrialLoad.h"
#include "zdm/model/ObjectHeader.h"

#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace zdm {

/// How far bytes are known to be as they were saved; the best first.
enum class Trust {
  kVerified,   // they fit their checksum
  kMended,     // they do with a bit flipped
  kUnchecked,  // no checksum was found
  kDoubtful,   // they do not fit it, and can be loaded
  kNone,
};

/// Bytes of the file that are a table of the document.
struct FoundTable {
  Trust trust = Trust::kNone;
  RawRun run;  // mended
};

struct FoundRecord {
  LONG id;
  LONG ownerId;  // as stored
  GUID classId;
  LONG auxWords[2];
  bool isFrame;
  Trust trust;
  std::vector<BYTE> bytes;  // mended; of a frame the whole frame
  std::vector<RawRun::Piece> pieces;
};

class SalvageScan {
 public:
  /// @param container  borrowed.
  explicit SalvageScan(const RawContainer& container);

  const VersionRecord* Version() const {
    return version_.trust != Trust::kNone ? &fields_ : nullptr;
  }
  const FoundTable& VersionTable() const { return version_; }
  const FoundTable& IDs() const { return ids_; }
  const FoundTable& Paths() const { return paths_; }
  const FoundTable& Root() const { return root_; }
  const FoundTable& Order() const { return order_; }
  const FoundTable& Index() const { return index_; }
  /// By ID.
  const std::map<LONG, FoundRecord>& Records() const { return records_; }
  /// IDs that the index or the ID table names, with or without a record.
  const std::set<LONG>& NamedIDs() const { return namedIds_; }
  /// Where the index has records that were not found there as they were saved.
  const std::vector<RawRun::Piece>& Damaged() const { return damaged_; }
  /// Where entries of an index stand that is not whole.
  const std::vector<RawRun::Piece>& IndexPieces() const { return indexPieces_; }

 private:
  /// A place in a run.
  struct Spot {
    std::size_t run;
    std::size_t at;
  };
  struct Hit : Spot {
    LONG id;
    bool isFrame;
  };

  void FindVersion();
  FoundTable FindTable(const OLECHAR* name, ULONG checksum);
  template <class Extent>
  FoundTable SearchTable(ULONG checksum, Extent extent);
  void FindTables();
  void FindRoot();
  void CollectEntries();
  void AddEntry(const IndexEntry& entry);
  void NameIDs();
  void AnchorByName();
  void CollectClasses();
  void CollectHits();
  void VerifyHits();
  void VerifyEntries(bool mend);
  void TakeLoadable();
  std::size_t TakeUnnamedClass(Spot spot);
  bool IsEndOfRecord(Spot spot) const;

  bool Spend(std::size_t work);
  std::span<const BYTE> BytesAt(Spot spot, std::size_t length) const;
  bool Verify(Spot spot, const IndexEntry& entry, bool mend);
  std::size_t TakeIfLoadable(Spot spot, const IndexEntry* entry);
  bool Take(Spot spot, std::vector<BYTE> bytes, bool isFrame, Trust trust);
  std::vector<RawRun::Piece> PiecesAt(Spot spot, std::size_t length) const;
  bool IsFound(LONG id) const { return records_.contains(id); }

  const RawContainer& container_;
  const std::vector<RawRun>& runs_;
  std::size_t work_ = 0;  // left
  FoundTable version_;
  VersionRecord fields_ = {};
  FoundTable ids_;
  FoundTable paths_;
  FoundTable root_;
  FoundTable order_;
  FoundTable index_;
  std::vector<IndexEntry> entries_;
  std::unordered_multimap<LONG, std::size_t> entriesOf_;  // by ID, places in entries_
  std::set<LONG> namedIds_;
  std::unordered_map<ULONG, std::vector<Spot>> anchors_;  // where streams of records begin; `at`
                                                          // may be below 0, modulo 2^64
  std::vector<GUID> classes_;
  std::vector<Hit> hits_;
  std::vector<std::vector<bool>> isTaken_;  // bytes of each run
  std::map<LONG, FoundRecord> records_;
  std::vector<RawRun::Piece> damaged_;
  std::vector<RawRun::Piece> indexPieces_;
  TrialLoad trial_;
};

}  // namespace zdm
