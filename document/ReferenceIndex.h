// Who refers to whom in one document, remembered: built by one walk when it is first asked, and
// kept right from then on. It watches whatever holds references (ChangeWatch.h); what changed since
// is walked again when it is next asked, and everything when the ID table lost records or was
// sorted. Answers are those of a walk over the document at that moment (References.h): references
// of valid objects and of the document itself, owners left out. A host's class that holds
// references of its own says Watch and Changed, or it is not kept right.
#pragma once

#include "document/Adjacency.h"
#include "document/References.h"
#include "document/Referrers.h"
#include "platform/core/ChangeWatch.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace zdm {

class ReferenceIndex : private ChangeWatch {
 public:
  /// The document outlives it.
  explicit ReferenceIndex(CZDocument& document) : document_(document) {}

  /// As zdm::ReferencesTo, looking only at the objects that do refer to it.
  std::vector<Reference> ReferencesTo(const OID* target);

  /// Borrowed until the document changes.
  Referrers GetReferrers();

  // By IDs, each once and ascending; nothing for an ID that is not listed.

  /// Borrowed until the index is asked again.
  std::span<const LONG> ReferrersOf(LONG id);
  /// All objects that lead to one of `ids` over any chain, these left out.
  std::vector<LONG> DependentsOf(std::span<const LONG> ids);
  /// All valid objects that one of `ids` leads to over any chain, these left out.
  std::vector<LONG> ClosureOf(std::span<const LONG> ids);

 private:
  friend class Referrers;
  using Slot = Adjacency::Node;
  static constexpr Slot kNone = Referrers::kNoSlot;
  class Walker;

  void OnChanged(ULONG number) override;
  void BringUpToDate();
  void Rebuild();
  void Renew(Slot slot);
  void WatchOnly(Slot slot) const;
  Slot Find(const OID* oid) const;
  Slot FindNear(LONG id) const;
  Slot FindID(LONG id) const;
  Slot FindOrAdd(OID* oid);
  Slot Make(OID* oid);
  Slot FindOrMake(OID* oid);
  void List(Slot slot);
  std::vector<Slot> TargetsOf(Slot slot);
  std::vector<LONG> Reach(std::span<const LONG> ids, const Adjacency& lists) const;

  CZDocument& document_;
  // Records have slots, for good: those listed and those referred to.
  std::vector<OID*> records_;
  std::vector<LONG> ids_;
  std::vector<char> isListed_;  // in the table now, or the document's own
  std::vector<char> isLive_;    // its object counts
  // Slots of listed records by ID from firstID_ on, and of all others.
  LONG firstID_ = 0;
  std::vector<Slot> byID_;
  std::unordered_map<const OID*, Slot> others_;
  Adjacency targets_;
  Adjacency referrers_;
  bool isStale_ = true;
  bool isAscending_ = true;  // the table is; then so are answers in its order
  ULONGLONG revision_ = 0;
  std::size_t listed_ = 0;  // records of the table that are known
  std::vector<Slot> changed_;
  std::vector<char> isChanged_;
  std::vector<LONG> referrersOf_;  // the last answer
};

}  // namespace zdm
