#include "document/Transfer.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/Meaning.h"
#include "document/ReferenceMapper.h"
#include "platform/ole/CAtlException.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMProxyObject.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/CZReltnColl.h"

namespace zdm {

bool IsCopyable(IZDMObject* object) {
  return dynamic_cast<CZDMAbsentObject*>(object) == nullptr &&
         ViewAs<IZDMProxyObject>(object) == nullptr &&
         ZCore::GetZFactory()->IsRegistered(object->GetZRID());
}

bool IsAlive(const OID* record) {
  return record->Object != nullptr && record->JudgeStatus(ZOS_VALID) &&
         !record->JudgeStatus(ZOS_DELETED);
}

bool IsListedIn(CZDocument& document, IZDMObject* object) {
  const OID* oid = object != nullptr ? object->GetOID() : nullptr;
  return oid != nullptr && oid->Object == object && document.GetOIDByID(oid->ID) == oid;
}

Refusal JudgeDocuments(const CZDocument& source, const CZDocument& target) {
  if (source.IsClosing() || target.IsClosing()) return Refusal::kClosing;
  return &source == &target ? Refusal::kSameDocument : Refusal::kNone;
}

namespace {

/// Copied collections have no collections in them: each gets its place in `to`.
void CopyNested(IZReltnColl* from, IZReltnColl* to) {
  if (from == nullptr || to == nullptr || from->GetCount() == to->GetCount()) return;
  LONGLONG place = to->GetHeadPosition();
  for (LONGLONG pos = from->GetHeadPosition(); pos != 0;) {
    IZRelation* element = from->GetNext(pos);
    if (auto* nested = ViewAs<IZReltnColl>(element)) {
      const auto copy = CreateAs<IZReltnColl, CZReltnColl>();
      if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
      copy->CopyFrom(nested);
      CopyNested(nested, copy);
      if (place != 0) {
        to->InsertBefore(copy, &place);
        to->GetNext(place);
      } else {
        to->AddTail(copy);
      }
    } else if (element != nullptr && place != 0) {
      to->GetNext(place);
    }
  }
}

/// Copied parameters have no links.
void CopyLink(IZParameter* from, IZParameter* to) {
  if (from == nullptr || to == nullptr) return;
  if (IZDMObject* source = from->GetLinkedObject()) to->SetLinkedObject(source);
}

/// What a copy of an object leaves out.
void CopyRest(IZDMObject* from, IZDMObject* to) {
  CopyNested(from->GetReltnColl(), to->GetReltnColl());
  auto* category = ViewAs<IZCategory>(from);
  auto* copied = ViewAs<IZCategory>(to);
  if (category != nullptr && copied != nullptr) {
    CopyNested(category->GetMemberColl(), copied->GetMemberColl());
  }
  CopyLink(ViewAs<IZParameter>(from), ViewAs<IZParameter>(to));
  IZParameterArray* links = from->PeekParameterArray();
  IZParameterArray* copies = to->PeekParameterArray();
  if (links == nullptr || copies == nullptr || links->GetCount() != copies->GetCount()) return;
  for (LONG i = 0; i < links->GetCount(); ++i) CopyLink(links->GetAt(i), copies->GetAt(i));
}

}  // namespace

/// Lives on the stack.
class Transfer::Mapper : public ReferenceMapper {
 public:
  Mapper(Transfer& transfer, CPIDManager* paths, std::vector<LeadingOut>* out)
      : ReferenceMapper(paths), transfer_(transfer), out_(out) {}

  void Map(IZDMObject* original, IZDMObject* object) {
    original_ = original;
    ReferenceMapper::Map(object);
  }

 protected:
  OID* Replacement(OID* record) override {
    const Destination* const destination = transfer_.Find(record);
    if (destination == nullptr) return Stays(record) ? record : nullptr;
    // Before the copies are made any record will do.
    return destination->record != nullptr ? destination->record : record;
  }

  void Note(OID* record, ReferenceVia via, bool isCut) override {
    if (out_ == nullptr) return;
    const Destination* const known = transfer_.Find(record);
    if (known != nullptr && known->isInside && !isCut) return;
    const ReferenceFate fate = isCut              ? ReferenceFate::kCut
                               : known != nullptr ? known->fate
                                                  : ReferenceFate::kKept;
    out_->push_back({original_, record, via, fate});
  }

 private:
  /// What a counterpart has kept refers to its own document.
  bool Stays(const OID* record) const {
    const bool isHere =
        transfer_.outside_ == Outside::kStays || transfer_.target_.GetOIDByID(record->ID) == record;
    return isHere && IsAlive(record);
  }

  Transfer& transfer_;
  std::vector<LeadingOut>* const out_;
  IZDMObject* original_ = nullptr;
};

/// Takes back what was done so far, unless it came to its end.
class Transfer::Rollback {
 public:
  explicit Rollback(CZDocument& target) : target_(target) {}
  Rollback(const Rollback&) = delete;
  Rollback& operator=(const Rollback&) = delete;
  ~Rollback() {
    if (isDone_) return;
    for (; attached > 0; --attached) {
      IZDMObject* copy = copies[attached - 1];
      if (auto* manager = ViewAs<IZDMObjMgr>(copy->GetOwner())) manager->RemoveItem(copy);
    }
    for (; listed > 0; --listed) target_.GetOIDManager()->Remove(copies[listed - 1]->GetOID());
    try {
      for (const auto& [object, former] : replaced) {
        object->CopyFrom(former, kCopyMode);
        CopyRest(former, object);
      }
    } catch (...) {
      // Without memory some have the new data, which refers to nothing of the other document.
    }
  }
  void Done() { isDone_ = true; }

  std::vector<ZRefPtr<IZDMObject>> copies;
  std::size_t listed = 0;
  std::size_t attached = 0;
  std::vector<std::pair<IZDMObject*, ZRefPtr<IZDMObject>>> replaced;  // with their former data

 private:
  CZDocument& target_;
  bool isDone_ = false;
};

void Transfer::Copy(IZDMObject* original, IZDMObjMgr* fallback) {
  items_.push_back({original, nullptr, fallback});
  destinations_[original->GetOID()] = {nullptr, ReferenceFate::kKept, true};
}

void Transfer::Replace(IZDMObject* original, IZDMObject* counterpart) {
  items_.push_back({original, counterpart, nullptr});
  destinations_[original->GetOID()] = {counterpart->GetOID(), ReferenceFate::kKept, true};
}

void Transfer::LeadTo(const OID* record, OID* counterpart, ReferenceFate fate) {
  destinations_.try_emplace(record, Destination{counterpart, fate, false});
}

/// Where references to `record` are led; null when that depends on what there is outside.
const Transfer::Destination* Transfer::Find(const OID* record) {
  auto found = destinations_.find(record);
  if (found != destinations_.end()) return &found->second;
  OID* counterpart =
      meanings_ != nullptr && IsAlive(record) ? meanings_->Find(record->Object) : nullptr;
  if (counterpart == nullptr) return nullptr;
  const Destination destination = {counterpart, ReferenceFate::kCounterpart, false};
  return &destinations_.try_emplace(record, destination).first->second;
}

std::vector<LeadingOut> Transfer::FindLeadingOut() {
  std::vector<LeadingOut> out;
  Mapper mapper(*this, nullptr, &out);
  for (const Item& item : items_) mapper.Map(item.original, item.original);
  return out;
}

IZDMObjMgr* Transfer::ManagerFor(const Item& item) {
  const auto found = destinations_.find(item.original->GetOwnerOID());
  const OID* owner = found != destinations_.end() ? found->second.record : nullptr;
  auto* manager = owner != nullptr ? ViewAs<IZDMObjMgr>(owner->Object) : nullptr;
  return manager != nullptr ? manager : item.fallback;
}

std::vector<IZDMObject*> Transfer::CarryOut() {
  COIDManager& ids = *target_.GetOIDManager();
  Rollback work(target_);
  for (const Item& item : items_) {
    const auto copy =
        CloneAs<IZDMObject>(item.counterpart != nullptr ? item.counterpart : item.original);
    if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
    CopyRest(item.counterpart != nullptr ? item.counterpart : item.original, copy);
    if (item.counterpart != nullptr) {
      work.replaced.emplace_back(item.counterpart, copy);
    } else {
      work.copies.push_back(copy);
    }
  }
  for (IZDMObject* copy : work.copies) {
    ids.AssignNewID(copy->GetOID());
    ++work.listed;
  }
  auto next = work.copies.begin();
  for (const Item& item : items_) {
    if (item.counterpart != nullptr) {
      item.counterpart->CopyFrom(item.original, kCopyMode);
      CopyRest(item.original, item.counterpart);
    } else {
      destinations_[item.original->GetOID()].record = (*next++)->GetOID();
    }
  }
  Mapper mapper(*this, target_.GetPIDManager(), nullptr);
  next = work.copies.begin();
  for (const Item& item : items_) {
    mapper.Map(item.original, item.counterpart != nullptr ? item.counterpart : (*next++).Get());
  }
  std::vector<IZDMObject*> copies;
  for (const Item& item : items_) {
    if (item.counterpart != nullptr) continue;
    IZDMObject* copy = work.copies[copies.size()];
    ManagerFor(item)->AttachTail(copy);
    work.attached = copies.size() + 1;
    copy->SetStatus(ZOS_ATTACHED);
    copy->SetStatus(ZOS_VALID);
    copies.push_back(copy);
  }
  work.Done();
  target_.SetModified(true);
  return copies;
}

}  // namespace zdm
