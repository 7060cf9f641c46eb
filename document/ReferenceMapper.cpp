#include "document/ReferenceMapper.h"

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
    if (reltn != nullptr) reltn->Accept(root, owner, this);
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
};

}  // namespace

void ReferenceMapper::Map(IZDMObject* object) {
  inParameters_.clear();
  nextInParameters_ = 0;
  IZParameterArray* parameters = object->PeekParameterArray();
  if (parameters != nullptr) {
    Places places(inParameters_);
    parameters->Accept(object, object, &places);
  }
  object->VisitReferences(object, this);
  MapHidden(object, object->GetReltnColl(), false);
  if (parameters != nullptr) MapValues(object, *parameters);
  if (auto* category = ViewAs<IZCategory>(object)) {
    MapHidden(object, category->GetMemberColl(), false);
  }
  MapCurrent(object);
}

bool ReferenceMapper::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr) return false;
  reltn->Accept(root, owner, this);
  if (auto* category = ViewAs<IZCategoryReltn>(reltn)) {
    MapHidden(owner, category->GetSubReltns(), false);
  }
  return false;
}

/// What a walk over `coll` leaves out; of a nested one everything.
void ReferenceMapper::MapHidden(IZDMObject* owner, IZReltnColl* coll, bool isNested) {
  if (coll == nullptr) return;
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
}

/// Elements and collections that are values.
void ReferenceMapper::MapValues(IZDMObject* owner, IZParameterArray& parameters) {
  for (LONG i = 0; i < parameters.GetCount(); ++i) {
    IZParameter* parameter = parameters.GetAt(i);
    ZDfValue* value = parameter != nullptr ? parameter->GetValue() : nullptr;
    if (value == nullptr) continue;
    if (value->GetType() == ZDfReltnColl::kType) {
      MapHidden(owner, static_cast<ZDfReltnColl*>(value)->Value, false);
    } else if (value->GetType() == ZDfElement::kType) {
      IZDMObject* element = static_cast<ZDfElement*>(value)->Value;
      const bool former = std::exchange(isHidden_, true);
      if (element != nullptr) Map(element);
      isHidden_ = former;
    }
  }
}

void ReferenceMapper::MapCurrent(IZDMObject* object) {
  auto* manager = ViewAs<IZDMObjMgr>(object);
  IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr;
  if (current == nullptr) return;
  OID* const former = current->GetOID();
  OID* const record = Replacement(former);
  NoteMet(former, ReferenceVia::kCurrent, record == nullptr);
  if (paths_ != nullptr && record != former) {
    manager->SetCurrent(record != nullptr ? record->Object : nullptr);
  }
}

/// Parameters are walked first, where the object offers them at all.
ReferenceVia ReferenceMapper::ViaOf(const void* leaf) {
  if (nextInParameters_ == inParameters_.size() || inParameters_[nextInParameters_] != leaf) {
    return ReferenceVia::kRelation;
  }
  ++nextInParameters_;
  return ReferenceVia::kParameter;
}

bool ReferenceMapper::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  const ReferenceVia via = ViaOf(oid);
  if (*oid == nullptr) return false;
  OID* const record = Replacement(*oid);
  NoteMet(*oid, via, record == nullptr);
  if (paths_ != nullptr) *oid = record;
  return false;
}

bool ReferenceMapper::MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) {
  static_cast<void>(ViaOf(pid));
  const bool canMap = CanMap(*pid);
  NotePath(*pid, !canMap);
  if (paths_ != nullptr) *pid = canMap ? Mapped(*pid) : nullptr;
  return false;
}

bool ReferenceMapper::MapCID(IZDMObject*, IZDMObject*, IZRelation*, CID* cid) {
  if (cid == nullptr) return false;
  const ReferenceVia via = ViaOf(cid);
  OID* const target = cid->ReltnOID != nullptr ? Replacement(cid->ReltnOID) : nullptr;
  const bool canMap = (target != nullptr) == (cid->ReltnOID != nullptr) && CanMap(cid->RefPID) &&
                      CanMap(cid->SelfPID);
  if (cid->ReltnOID != nullptr) NoteMet(cid->ReltnOID, via, !canMap);
  NotePath(cid->RefPID, !canMap);
  NotePath(cid->SelfPID, !canMap);
  if (paths_ == nullptr) return false;
  *cid = canMap ? CID(Mapped(cid->SelfPID), Mapped(cid->RefPID), target) : CID();
  return false;
}

bool ReferenceMapper::CanMap(const PID* path) {
  return path == nullptr || std::ranges::all_of(path->OIDs, [this](OID* record) {
           return record != nullptr && Replacement(record) != nullptr;
         });
}

/// Of a path that can be.
PID* ReferenceMapper::Mapped(PID* path) {
  if (path == nullptr) return nullptr;
  std::vector<OID*> records(path->OIDs.size());
  std::ranges::transform(path->OIDs, records.begin(),
                         [this](OID* record) { return Replacement(record); });
  return paths_->QueryPID(records);
}

void ReferenceMapper::NotePath(const PID* path, bool isCut) {
  if (path == nullptr) return;
  for (OID* record : path->OIDs) {
    if (record != nullptr) NoteMet(record, ReferenceVia::kPath, isCut);
  }
}

}  // namespace zdm
