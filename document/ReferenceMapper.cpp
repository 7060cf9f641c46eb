#include "document/ReferenceMapper.h"

#include "zdm/categories/CategoryTree.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/identity/CID.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/ZDfValues.h"

#include <algorithm>
#include <utility>

namespace zdm {

namespace {

/// Writes down where references stand. Lives on the stack.
class Places : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  explicit Places(std::vector<const void*>& out) : out_(out) {}

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    if (reltn == nullptr || depth_ == kMaxCategoryDepth) return false;
    ++depth_;
    reltn->Accept(root, owner, this);
    --depth_;
    return false;
  }
  bool MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID* cid) override { return Add(cid); }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override { return Add(oid); }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) override { return Add(pid); }

 private:
  bool Add(const void* place) {
    out_.push_back(place);
    return false;
  }

  std::vector<const void*>& out_;
  int depth_ = 0;
};

}  // namespace

void ReferenceMapper::Map(IZDMObject* object) {
  isUnfinished_ = false;
  MapAll(object);
}

void ReferenceMapper::MapAgain(IZDMObject* object) {
  isAgain_ = true;
  const bool formerNotes = std::exchange(notes_, false);
  Map(object);
  notes_ = formerNotes;
  isAgain_ = false;
}

void ReferenceMapper::MapAll(IZDMObject* object) {
  inParameters_.clear();
  nextInParameters_ = 0;
  IZParameterArray* parameters = object->PeekParameterArray();
  if (parameters != nullptr && notes_ && !isHidden_) {
    Places places(inParameters_);
    parameters->Accept(object, object, &places);
  }
  object->VisitReferences(object, this);
  if (auto* parameter = ViewAs<IZParameter>(object)) MapParameter(object, *parameter);
  if (paths_ != nullptr) {
    MapHidden(object, object->GetReltnColl(), false);
    const LONG count = parameters != nullptr ? parameters->GetCount() : 0;
    for (LONG i = 0; i < count; ++i) {
      if (IZParameter* parameter = parameters->GetAt(i)) MapValue(object, *parameter);
    }
    if (auto* category = ViewAs<IZCategory>(object)) {
      MapHidden(object, category->GetMemberColl(), false);
    }
  }
  MapCurrent(object);
}

bool ReferenceMapper::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr || depth_ == kMaxCategoryDepth) return false;
  ++depth_;
  reltn->Accept(root, owner, this);
  if (paths_ != nullptr) {
    if (auto* category = ViewAs<IZCategoryReltn>(reltn)) {
      MapHidden(owner, category->GetSubReltns(), false);
    }
  }
  --depth_;
  return false;
}

/// What a walk over `coll` leaves out; of a nested one everything.
void ReferenceMapper::MapHidden(IZDMObject* owner, IZReltnColl* coll, bool isNested) {
  if (coll == nullptr || depth_ == kMaxCategoryDepth) return;
  ++depth_;
  const bool former = std::exchange(isHidden_, true);
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    IZRelation* element = coll->GetNext(pos);
    if (element == nullptr) continue;
    const bool isOffered = !isNested && element->JudgeReltnStatus(ZRS_VALID);
    if (isOffered) continue;
    if (auto* nested = ViewAs<IZReltnColl>(element)) {
      MapHidden(owner, nested, true);
    } else {
      Visit(owner, owner, element);
    }
  }
  isHidden_ = former;
  --depth_;
}

/// An object that is a parameter itself does not offer what it refers to as one.
void ReferenceMapper::MapParameter(IZDMObject* object, IZParameter& parameter) {
  const bool former = std::exchange(isParameter_, true);
  parameter.Accept(object, object, this);
  isParameter_ = former;
  if (paths_ != nullptr) MapValue(object, parameter);
}

/// An element, or what a collection does not offer.
void ReferenceMapper::MapValue(IZDMObject* owner, IZParameter& parameter) {
  ZDfValue* value = parameter.GetValue();
  if (value == nullptr) return;
  const unsigned char type = value->GetType();
  if (type == ZDfReltnColl::kType) {
    MapHidden(owner, static_cast<ZDfReltnColl*>(value)->Value, false);
  } else if (type == ZDfElement::kType) {
    IZDMObject* element = static_cast<ZDfElement*>(value)->Value;
    if (element == nullptr || depth_ == kMaxCategoryDepth) return;
    ++depth_;
    const bool former = std::exchange(isHidden_, true);
    MapAll(element);
    isHidden_ = former;
    --depth_;
  }
}

void ReferenceMapper::MapCurrent(IZDMObject* object) {
  auto* manager = ViewAs<IZDMObjMgr>(object);
  IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr;
  if (current == nullptr) return;
  OID* const former = current->GetOID();
  const Target target = TargetOf(former);
  NoteMet(former, ReferenceVia::kCurrent, target);
  if (target.isLater) {
    isUnfinished_ = true;
  } else if (paths_ != nullptr && target.record != former) {
    manager->SetCurrent(target.record != nullptr ? target.record->Object : nullptr);
  }
}

/// Parameters are walked first, where the object offers them at all.
ReferenceVia ReferenceMapper::ViaOf(const void* leaf) {
  if (isParameter_) return ReferenceVia::kParameter;
  if (nextInParameters_ == inParameters_.size() || inParameters_[nextInParameters_] != leaf) {
    return ReferenceVia::kRelation;
  }
  ++nextInParameters_;
  return ReferenceVia::kParameter;
}

bool ReferenceMapper::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  const ReferenceVia via = ViaOf(oid);
  if (*oid == nullptr) return false;
  const Target target = TargetOf(*oid);
  NoteMet(*oid, via, target);
  if (target.isLater) {
    isUnfinished_ = true;
  } else if (paths_ != nullptr) {
    *oid = target.record;
  }
  return false;
}

bool ReferenceMapper::MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) {
  static_cast<void>(ViaOf(pid));
  if (*pid == nullptr) return false;
  const Prospect prospect = ProspectOf(*pid);
  NotePath(*pid, !prospect.canMap);
  if (prospect.canMap && prospect.isLater) {
    isUnfinished_ = true;
  } else if (paths_ != nullptr) {
    *pid = prospect.canMap ? Mapped(*pid) : nullptr;
  }
  return false;
}

bool ReferenceMapper::MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID* cid) {
  if (cid == nullptr) return false;
  const ReferenceVia via = ViaOf(cid);
  Target target = {};
  if (cid->ReltnOID != nullptr) target = TargetOf(cid->ReltnOID);
  OID* const record = target.record;
  const Prospect ref = ProspectOf(cid->RefPID);
  const Prospect self = ProspectOf(cid->SelfPID);
  const bool canMap =
      (record != nullptr) == (cid->ReltnOID != nullptr) && ref.canMap && self.canMap;
  if (!canMap) target.record = nullptr;
  if (cid->ReltnOID != nullptr) NoteMet(cid->ReltnOID, via, target);
  NotePath(cid->RefPID, !canMap);
  NotePath(cid->SelfPID, !canMap);
  if (canMap && (target.isLater || ref.isLater || self.isLater)) {
    isUnfinished_ = true;
  } else if (paths_ != nullptr) {
    *cid = canMap ? CID(Mapped(cid->SelfPID), Mapped(cid->RefPID), record) : CID();
  }
  return false;
}

ReferenceMapper::Prospect ReferenceMapper::ProspectOf(const PID* path) {
  Prospect prospect;
  if (path == nullptr) return prospect;
  for (OID* record : path->OIDs) {
    const Target target = record != nullptr ? TargetOf(record) : Target();
    prospect.canMap &= target.record != nullptr;
    prospect.isLater |= target.isLater;
  }
  return prospect;
}

/// Of a path that can be.
PID* ReferenceMapper::Mapped(PID* path) {
  if (path == nullptr) return nullptr;
  std::vector<OID*> records(path->OIDs.size());
  std::ranges::transform(path->OIDs, records.begin(),
                         [this](OID* record) { return TargetOf(record).record; });
  return paths_->QueryPID(records);
}

void ReferenceMapper::NoteMet(OID* record, ReferenceVia via, const Target& target) {
  if (!notes_ || isHidden_ || (target.isInside && target.record != nullptr)) return;
  Note(record, via, target.record != nullptr ? target.fate : ReferenceFate::kCut);
}

void ReferenceMapper::NotePath(const PID* path, bool isCut) {
  if (path == nullptr || !notes_ || isHidden_) return;
  for (OID* record : path->OIDs) {
    if (record == nullptr) continue;
    Target target = TargetOf(record);
    if (isCut) target.record = nullptr;
    NoteMet(record, ReferenceVia::kPath, target);
  }
}

}  // namespace zdm
