#include "document/Transfer.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/Meaning.h"
#include "document/ReferenceMapper.h"
#include "platform/ole/CAtlException.h"
#include "zdm/categories/CategoryTree.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMProxyObject.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/CZReltnColl.h"
#include "zdm/relations/ZDfValues.h"

#include <algorithm>
#include <utility>

namespace zdm {

bool IsCopyable(IZDMObject* object) {
  const CZRClass* const description = object->getZRClass();
  return description != nullptr && description != CZDMAbsentObject::gpDesc &&
         ViewAs<IZDMProxyObject>(object) == nullptr &&
         ZCore::GetZFactory()->IsRegistered(description->GetClassID());
}

bool IsAlive(const OID* record) {
  return record->Object != nullptr && record->Status.test(ZOS_VALID) &&
         !record->Status.test(ZOS_DELETED);
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

/// Copied collections have no collections in them: each gets its place in `to`. One that is met on
/// the way down to itself is left out, and so is what is too deep to be led over.
class NestedCopier {
 public:
  void Copy(IZReltnColl* from, IZReltnColl* to) {
    if (from == nullptr || to == nullptr || from->GetCount() == to->GetCount()) return;
    path_.push_back(from);
    LONGLONG place = to->GetHeadPosition();
    for (LONGLONG pos = from->GetHeadPosition(); pos != 0;) {
      IZRelation* element = from->GetNext(pos);
      if (auto* nested = ViewAs<IZReltnColl>(element)) {
        CopyInto(to, nested, place);
      } else if (element != nullptr && place != 0) {
        to->GetNext(place);
      }
    }
    path_.pop_back();
  }

 private:
  void CopyInto(IZReltnColl* to, IZReltnColl* nested, LONGLONG& place) {
    if (path_.size() >= kMaxCategoryDepth - 1 || std::ranges::find(path_, nested) != path_.end())
      return;
    if (++made_ > kMaxCategoryReltns) throw CAtlException(E_FAIL);
    const auto copy = NewOf<IZReltnColl, CZReltnColl>();
    copy->CopyFrom(nested);
    Copy(nested, copy);
    if (place != 0) {
      to->InsertBefore(copy, &place);
      to->GetNext(place);
    } else {
      to->AddTail(copy);
    }
  }

  std::vector<const IZReltnColl*> path_;
  ULONG made_ = 0;
};

void CopyNested(IZReltnColl* from, IZReltnColl* to) { NestedCopier().Copy(from, to); }

void CopyRest(IZDMObject* from, IZDMObject* to);

/// Copied parameters have no links.
void CopyRest(IZParameter& from, IZParameter& to) {
  if (IZDMObject* source = from.GetLinkedObject()) to.SetLinkedObject(source);
  ZDfValue* value = from.GetValue();
  ZDfValue* copied = to.GetValue();
  if (value == nullptr || copied == nullptr || value->GetType() != copied->GetType()) return;
  if (value->GetType() == ZDfReltnColl::kType) {
    CopyNested(static_cast<ZDfReltnColl*>(value)->Value, static_cast<ZDfReltnColl*>(copied)->Value);
  } else if (value->GetType() == ZDfElement::kType) {
    IZDMObject* element = static_cast<ZDfElement*>(value)->Value;
    IZDMObject* copy = static_cast<ZDfElement*>(copied)->Value;
    if (element != nullptr && copy != nullptr) CopyRest(element, copy);
  }
}

/// What a copy of an object leaves out.
void CopyRest(IZDMObject* from, IZDMObject* to) {
  CopyNested(from->GetReltnColl(), to->GetReltnColl());
  if (auto* category = ViewAs<IZCategory>(from)) {
    auto* copied = ViewAs<IZCategory>(to);
    if (copied != nullptr) CopyNested(category->GetMemberColl(), copied->GetMemberColl());
  }
  if (auto* parameter = ViewAs<IZParameter>(from)) {
    if (auto* copied = ViewAs<IZParameter>(to)) CopyRest(*parameter, *copied);
  }
  IZParameterArray* parameters = from->PeekParameterArray();
  IZParameterArray* copies = parameters != nullptr ? to->PeekParameterArray() : nullptr;
  if (copies == nullptr) return;
  const LONG count = parameters->GetCount();
  if (count != copies->GetCount()) return;
  for (LONG i = 0; i < count; ++i) CopyRest(*parameters->GetAt(i), *copies->GetAt(i));
}

}  // namespace

/// Lives on the stack.
class Transfer::Mapper final : public ReferenceMapper {
 public:
  Mapper(Transfer& transfer, CPIDManager* paths, std::vector<LeadingOut>* out)
      : ReferenceMapper(paths, out != nullptr), transfer_(transfer), out_(out) {}

  void Map(IZDMObject* original, IZDMObject* object) {
    original_ = original;
    ReferenceMapper::Map(object);
  }

 protected:
  Target TargetFor(OID* record, bool again) override {
    const Destination* const destination =
        again ? transfer_.destinations_.Find(record) : transfer_.Find(record);
    if (destination == nullptr) {
      return {again || Stays(record) ? record : nullptr, ReferenceFate::kKept, false, false};
    }
    const bool isLater = destination->record == nullptr;
    return {isLater ? record : destination->record, destination->fate, destination->isInside,
            isLater};
  }

  void Note(OID* record, ReferenceVia via, ReferenceFate fate) override {
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
      auto* manager = ViewAs<IZDMObjMgr>(copy->GetOwner());
      if (manager != nullptr && manager->GetTail() == copy) manager->RemoveTailNoReturn();
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

void Transfer::Reserve(std::size_t count) {
  items_.reserve(items_.size() + count);
  destinations_.Reserve(items_.size() + count);
}

void Transfer::Copy(IZDMObject* original, IZDMObjMgr* fallback) {
  items_.push_back({original, nullptr, fallback});
  *destinations_.Insert(original->GetOID()).first = {nullptr, ReferenceFate::kKept, true};
}

void Transfer::Replace(IZDMObject* original, IZDMObject* counterpart) {
  items_.push_back({original, counterpart, nullptr});
  *destinations_.Insert(original->GetOID()).first = {counterpart->GetOID(), ReferenceFate::kKept,
                                                     true};
}

void Transfer::LeadTo(const OID* record, OID* counterpart, ReferenceFate fate) {
  const auto [destination, isNew] = destinations_.Insert(record);
  if (isNew) *destination = {counterpart, fate, false};
}

/// Where references to `record` are led; null when that depends on what there is outside.
const Transfer::Destination* Transfer::Find(const OID* record) {
  if (const Destination* known = destinations_.Find(record)) return known;
  OID* counterpart =
      meanings_ != nullptr && IsAlive(record) ? meanings_->Find(record->Object) : nullptr;
  if (counterpart == nullptr) return nullptr;
  LeadTo(record, counterpart, ReferenceFate::kCounterpart);
  return destinations_.Find(record);
}

std::vector<LeadingOut> Transfer::FindLeadingOut() {
  std::vector<LeadingOut> out;
  Mapper mapper(*this, nullptr, &out);
  for (const Item& item : items_) mapper.Map(item.original, item.original);
  return out;
}

IZDMObjMgr* Transfer::ManagerFor(const Item& item) {
  const OID* record = item.original->GetOwnerOID();
  const Destination* const led = record != nullptr ? destinations_.Find(record) : nullptr;
  const OID* owner = led != nullptr ? led->record : nullptr;
  auto* manager = owner != nullptr ? ViewAs<IZDMObjMgr>(owner->Object) : nullptr;
  return manager != nullptr ? manager : item.fallback;
}

/// A copy, listed, of what is copied; of what is replaced the former data are kept.
IZDMObject* Transfer::Make(const Item& item, Rollback& work) {
  IZDMObject* const source = item.counterpart != nullptr ? item.counterpart : item.original;
  auto copy = CloneAs<IZDMObject>(source);
  if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
  CopyRest(source, copy);
  if (item.counterpart != nullptr) {
    work.replaced.emplace_back(item.counterpart, std::move(copy));
    item.counterpart->CopyFrom(item.original, kCopyMode);
    CopyRest(item.original, item.counterpart);
    return item.counterpart;
  }
  IZDMObject* const made = copy;
  work.copies.push_back(std::move(copy));
  target_.GetOIDManager()->AssignNewID(made->GetOID());
  ++work.listed;
  destinations_.Find(item.original->GetOID())->record = made->GetOID();
  return made;
}

/// For what `items` objects refer to, by what the first of them do: moving that later would cost as
/// much memory again.
void Transfer::MakeRoom(std::vector<LeadingOut>& leadingOut, std::size_t items) {
  constexpr std::size_t kMostEach = 16;
  const std::size_t each = std::min(leadingOut.size() * 5 / (4 * kSample) + 1, kMostEach);
  leadingOut.reserve(leadingOut.size() + each * items);
}

std::vector<IZDMObject*> Transfer::CarryOut(std::vector<LeadingOut>* leadingOut) {
  Rollback work(target_);
  work.copies.reserve(items_.size());
  Mapper mapper(*this, target_.GetPIDManager(), leadingOut);
  // Each is led over while it is at hand. Only what refers to one still to come is met again.
  std::vector<IZDMObject*> unfinished;
  std::size_t number = 0;
  for (const Item& item : items_) {
    if (leadingOut != nullptr && number++ == kSample) MakeRoom(*leadingOut, items_.size());
    IZDMObject* const object = Make(item, work);
    mapper.Map(item.original, object);
    if (mapper.IsUnfinished()) unfinished.push_back(object);
  }
  for (IZDMObject* object : unfinished) mapper.MapAgain(object);
  std::vector<IZDMObject*> copies;
  copies.reserve(work.copies.size());
  for (const Item& item : items_) {
    if (item.counterpart != nullptr) continue;
    IZDMObject* const copy = work.copies[copies.size()];
    ManagerFor(item)->AttachTail(copy);
    ++work.attached;
    copy->SetStatus(ZOS_ATTACHED);
    copy->SetStatus(ZOS_VALID);
    copies.push_back(copy);
  }
  work.Done();
  target_.SetModified(true);
  return copies;
}

}  // namespace zdm
