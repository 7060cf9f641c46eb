#include "document/ReferenceIndex.h"

#include "document/CZDocument.h"
#include "document/ReferenceWalk.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <bit>

namespace zdm {

namespace {

constexpr std::size_t kFewChanges = 64;  // and a quarter of all: more of them are a new walk

bool IsLive(const OID* oid) { return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID); }

}  // namespace

/// Gathers the records that an object refers to. Lives on the stack.
class ReferenceIndex::Walker : public ReferenceWalk {
 public:
  const std::vector<OID*>& RecordsOf(IZDMObject* object) {
    found_.clear();
    Walk(object);
    return found_;
  }

 protected:
  void Meet(IZDMObject*, OID* record, ReferenceVia) override { found_.push_back(record); }

 private:
  std::vector<OID*> found_;
};

void ReferenceIndex::OnChanged(ULONG number) {
  if (isStale_) return;
  const Slot slot = number - 1;
  if (number == kSeveral) {
    isStale_ = true;
  } else if (slot < isChanged_.size() && isChanged_[slot] == 0) {
    isChanged_[slot] = 1;
    changed_.push_back(slot);
    isStale_ = changed_.size() > kFewChanges + records_.size() / 4;
  }
}

void ReferenceIndex::BringUpToDate() {
  COIDManager& table = *document_.GetOIDManager();
  const std::vector<OID*>& oids = table.GetOIDs();
  if (isStale_ || revision_ != table.GetRevision()) return Rebuild();
  for (; listed_ < oids.size(); ++listed_) {
    const Slot slot = FindOrMake(oids[listed_]);
    List(slot);
    OnChanged(slot + 1);
  }
  while (!isStale_ && !changed_.empty()) {
    const Slot slot = changed_.back();
    changed_.pop_back();
    isChanged_[slot] = 0;
    Renew(slot);
  }
  if (isStale_) Rebuild();
}

/// Records keep their slots, so that the marks of what they hold stay right.
void ReferenceIndex::Rebuild() {
  COIDManager& table = *document_.GetOIDManager();
  const std::vector<OID*>& oids = table.GetOIDs();
  revision_ = table.GetRevision();
  std::vector<Slot> slots(oids.size());
  std::ranges::transform(oids, slots.begin(), [this](OID* oid) { return FindOrMake(oid); });
  const Slot root = FindOrAdd(document_.GetOID());
  std::ranges::fill(isListed_, 0);
  for (const Slot slot : slots) isListed_[slot] = 1;
  for (Slot slot = 0; slot < records_.size(); ++slot) {
    if (isListed_[slot] == 0) others_[records_[slot]] = slot;
  }
  isListed_[root] = 1;
  ids_[root] = kRootID;
  isAscending_ = true;
  firstID_ = oids.empty() ? 0 : oids.front()->ID;
  byID_.clear();
  for (const Slot slot : slots) List(slot);
  listed_ = oids.size();

  std::ranges::fill(isLive_, 0);
  targets_.Reset(records_.size());
  const auto walk = [this](Slot slot) {
    isLive_[slot] = 1;
    targets_.Append(slot, TargetsOf(slot));
  };
  for (const Slot slot : slots) {
    if (IsLive(records_[slot])) {
      walk(slot);
    } else {
      WatchOnly(slot);
    }
  }
  walk(root);
  targets_.Reverse(referrers_);
  changed_.clear();
  std::ranges::fill(isChanged_, 0);
  isStale_ = false;
}

/// The slots of what the object refers to, each once.
std::vector<ReferenceIndex::Slot> ReferenceIndex::TargetsOf(Slot slot) {
  const Look look(slot + 1);
  Walker walker;
  std::vector<Slot> targets;
  for (OID* oid : walker.RecordsOf(records_[slot]->Object)) targets.push_back(FindOrAdd(oid));
  std::ranges::sort(targets);
  targets.erase(std::unique(targets.begin(), targets.end()), targets.end());
  return targets;
}

/// Its object, if it has one, may become valid.
void ReferenceIndex::WatchOnly(Slot slot) const {
  const Look look(slot + 1);
  if (IZDMObject* object = records_[slot]->Object) Watch(*object);
}

void ReferenceIndex::Renew(Slot slot) {
  const std::vector<Slot> former(targets_[slot].begin(), targets_[slot].end());
  for (const Slot target : former) {
    targets_.Remove(slot, target);
    referrers_.Remove(target, slot);
  }
  isLive_[slot] = 0;
  if (isListed_[slot] == 0) return;
  const OID* oid = records_[slot];
  if (oid->ID != ids_[slot]) isStale_ = true;
  if (isStale_) return;
  if (!IsLive(oid) && oid != document_.GetOID()) return WatchOnly(slot);
  isLive_[slot] = 1;
  for (const Slot target : TargetsOf(slot)) {
    targets_.Add(slot, target);
    referrers_.Add(target, slot);
  }
}

// Slots.

/// The slot of the record that was listed with this ID, unless that was far off.
ReferenceIndex::Slot ReferenceIndex::FindNear(LONG id) const {
  const LONGLONG place = LONGLONG{id} - firstID_;
  const bool isNear = place >= 0 && place < static_cast<LONGLONG>(byID_.size());
  return isNear ? byID_[static_cast<std::size_t>(place)] : kNone;
}

ReferenceIndex::Slot ReferenceIndex::Find(const OID* oid) const {
  const Slot slot = FindNear(oid->ID);
  if (slot != kNone && records_[slot] == oid) return slot;
  const auto found = others_.find(oid);
  return found != others_.end() ? found->second : kNone;
}

ReferenceIndex::Slot ReferenceIndex::FindID(LONG id) const {
  const Slot slot = isAscending_ ? FindNear(id) : kNone;
  if (slot != kNone && records_[slot]->ID == id) return slot;
  const OID* oid = document_.GetOIDManager()->GetOIDByID(id);
  return oid != nullptr ? Find(oid) : kNone;
}

ReferenceIndex::Slot ReferenceIndex::FindOrAdd(OID* oid) {
  const Slot known = Find(oid);
  if (known != kNone) return known;
  const Slot slot = Make(oid);
  others_[oid] = slot;
  return slot;
}

/// For one that List comes to next.
ReferenceIndex::Slot ReferenceIndex::FindOrMake(OID* oid) {
  const Slot known = Find(oid);
  return known != kNone ? known : Make(oid);
}

ReferenceIndex::Slot ReferenceIndex::Make(OID* oid) {
  const auto slot = static_cast<Slot>(records_.size());
  records_.push_back(oid);
  ids_.push_back(oid->ID);
  isListed_.push_back(0);
  isLive_.push_back(0);
  isChanged_.push_back(0);
  targets_.Resize(records_.size());
  referrers_.Resize(records_.size());
  return slot;
}

/// A record of the table, the next one in its order, is found by its ID from now on, unless another
/// has that ID or it is far off.
void ReferenceIndex::List(Slot slot) {
  const OID* oid = records_[slot];
  ids_[slot] = oid->ID;
  isListed_[slot] = 1;
  const LONGLONG place = LONGLONG{oid->ID} - firstID_;
  const auto known = static_cast<LONGLONG>(byID_.size());
  if (place < known) isAscending_ = false;
  if (place < known || place > 4 * (known + 256)) {
    others_[oid] = slot;
    return;
  }
  byID_.resize(static_cast<std::size_t>(place) + 1, kNone);
  byID_.back() = slot;
  if (!others_.empty()) others_.erase(oid);
}

// Answers.

std::vector<Reference> ReferenceIndex::ReferencesTo(const OID* target) {
  BringUpToDate();
  if (!isAscending_) return zdm::ReferencesTo(document_, target);
  std::vector<Reference> references;
  const Slot slot = Find(target);
  if (slot == kNone) return references;
  std::vector<Slot> from(referrers_[slot].begin(), referrers_[slot].end());
  // In the order of the table; the document itself comes last.
  std::ranges::sort(from, {}, [this](Slot each) {
    return std::pair(records_[each] == document_.GetOID(), ids_[each]);
  });
  for (const Slot each : from) {
    for (const Reference& reference : ReferencesOf(records_[each]->Object)) {
      if (reference.to == target) references.push_back(reference);
    }
  }
  return references;
}

Referrers ReferenceIndex::GetReferrers() {
  BringUpToDate();
  return Referrers(*this);
}

/// In a table out of order, what is near is not always what the table finds.
Referrers::Referrers(const ReferenceIndex& index)
    : index_(index),
      lists_(index.referrers_),
      ids_(index.ids_.data()),
      firstID_(index.firstID_),
      near_(index.isAscending_ ? std::span(index.byID_) : std::span<const ULONG>()) {}

Referrers::IDs Referrers::Far(LONG id) const {
  const ULONG slot = index_.FindID(id);
  return slot != kNoSlot ? ListOf(slot) : IDs({}, ids_);
}

std::span<const LONG> ReferenceIndex::ReferrersOf(LONG id) {
  BringUpToDate();
  referrersOf_.clear();
  const Slot slot = FindID(id);
  if (slot == kNone) return {};
  for (const Slot each : referrers_[slot]) referrersOf_.push_back(ids_[each]);
  // As a rule they are: lists begin in the order of the table.
  if (!std::ranges::is_sorted(referrersOf_)) std::ranges::sort(referrersOf_);
  return referrersOf_;
}

std::vector<LONG> ReferenceIndex::DependentsOf(std::span<const LONG> ids) {
  BringUpToDate();
  return Reach(ids, referrers_);
}

std::vector<LONG> ReferenceIndex::ClosureOf(std::span<const LONG> ids) {
  BringUpToDate();
  return Reach(ids, targets_);
}

std::vector<LONG> ReferenceIndex::Reach(std::span<const LONG> ids, const Adjacency& lists) const {
  constexpr Slot kBits = 64;
  std::vector<ULONGLONG> reached(records_.size() / kBits + 1);
  std::vector<Slot> open;
  const auto reach = [&](Slot slot) {
    ULONGLONG& word = reached[slot / kBits];
    const ULONGLONG bit = ULONGLONG{1} << slot % kBits;
    if ((word & bit) != 0) return;
    word |= bit;
    open.push_back(slot);
  };
  std::vector<Slot> starts;
  for (const LONG id : ids) {
    const Slot slot = FindID(id);
    if (slot == kNone) continue;
    starts.push_back(slot);
    reach(slot);
  }
  while (!open.empty()) {
    const Slot slot = open.back();
    open.pop_back();
    for (const Slot next : lists[slot]) {
      if (isLive_[next] != 0) reach(next);
    }
  }
  for (const Slot slot : starts) reached[slot / kBits] &= ~(ULONGLONG{1} << slot % kBits);
  std::vector<LONG> found;
  for (Slot first = 0; const ULONGLONG word : reached) {
    for (ULONGLONG left = word; left != 0; left &= left - 1) {
      found.push_back(ids_[first + static_cast<Slot>(std::countr_zero(left))]);
    }
    first += kBits;
  }
  // As a rule they are: slots begin in the order of the table.
  if (!std::ranges::is_sorted(found)) std::ranges::sort(found);
  return found;
}

}  // namespace zdm
