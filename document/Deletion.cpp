#include "document/Deletion.h"

#include "document/CZDocument.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/identity/PID.h"
#include "zdm/model/ObjectList.h"
#include "zdm/relations/ReltnSelector.h"
#include "zdm/relations/ZReltnVisitor.h"
#include "zdm/relations/ZReltnVisitorIsDirectTo.h"

#include <unordered_set>

namespace zdm {

namespace {

using Records = std::unordered_set<const OID*>;

bool IsLive(const OID* oid) { return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID); }

/// The records of the objects and of all below them.
Records Closure(const std::vector<IZDMObject*>& objects) {
  Records records;
  std::vector<IZDMObject*> open = objects;
  while (!open.empty()) {
    IZDMObject* object = open.back();
    open.pop_back();
    if (object == nullptr || object->GetOID() == nullptr) continue;
    if (!records.insert(object->GetOID()).second) continue;
    auto* manager = ViewAs<IZDMObjMgr>(object);
    if (manager == nullptr) continue;
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;)
      open.push_back(manager->GetNext(pos));
  }
  return records;
}

/// Which of the records an object refers to through diffusible relations: for each what the
/// direct-reference visitor answers. Lives on the stack.
class DiffusibleTargets : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  explicit DiffusibleTargets(const Records& records) : records_(records) {}

  Records Of(IZDMObject* object) {
    found_.clear();
    object->VisitReferences(object, this);
    return std::move(found_);
  }

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    if (reltn != nullptr && SelectsLoosely(ZR_DIFFUSIBLE, *reltn)) reltn->Accept(root, owner, this);
    return false;
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    if (records_.contains(*oid)) found_.insert(*oid);
    return false;
  }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) override {
    if (*pid == nullptr) return false;
    for (OID* oid : (*pid)->OIDs) {
      if (records_.contains(oid)) found_.insert(oid);
    }
    return false;
  }

 private:
  const Records& records_;
  Records found_;
};

class Planner {
 public:
  Planner(CZDocument& document, const std::vector<IZDMObject*>& objects)
      : document_(document), records_(Closure(objects)), targets_(records_) {}

  Deletion Plan() {
    for (const OID* oid : document_.GetOIDManager()->GetOIDs()) {
      if (oid->Object == nullptr) continue;
      if (records_.contains(oid)) {
        plan_.objects.push_back(oid->Object);
        JudgeItself(oid->Object);
      } else if (IsLive(oid)) {
        JudgeReferrer(oid->Object);
      }
    }
    for (const Reference& reference : zdm::ReferencesOf(&document_)) NoteDangling(reference);
    return std::move(plan_);
  }

 private:
  void JudgeItself(IZDMObject* object) {
    if (static_cast<LONG>(object->GetID()) < 0) {
      plan_.obstacles.push_back({object, DeletionObstacle::kHardID, nullptr});
      return;
    }
    IZDMObject* owner = object->GetOwner();
    auto* manager = ViewAs<IZDMObjMgr>(owner);
    if (manager == nullptr || records_.contains(owner->GetOID())) return;
    if (manager->GetCurrent() != object) return;
    plan_.obstacles.push_back({object, DeletionObstacle::kCurrent, owner});
  }

  void JudgeReferrer(IZDMObject* object) {
    for (const Reference& reference : zdm::ReferencesOf(object)) NoteDangling(reference);
    if (!object->JudgeOptionAllowed(kReferencesCount)) return;
    for (const OID* target : targets_.Of(object)) {
      const bool isKept = target->Object != nullptr && target->ID >= 0 &&
                          target->Object->JudgeOptionAllowed(kKeptWhileReferenced) &&
                          ViewAs<IZDMObjMgr>(target->Object->GetOwner()) != nullptr;
      if (!isKept || !IsDirectTo(object, target->Object)) continue;
      plan_.obstacles.push_back({target->Object, DeletionObstacle::kReferred, object});
    }
  }

  /// An embedded object refers to nothing when asked, whatever it offers.
  static bool IsDirectTo(IZDMObject* object, IZDMObject* target) {
    ZReltnVisitorIsDirectTo visitor;
    visitor.Initialize(ZR_DIFFUSIBLE, target);
    return object->VisitReferences(object, &visitor);
  }

  void NoteDangling(const Reference& reference) {
    if (!records_.contains(reference.to)) return;
    if (reference.via == ReferenceVia::kCurrent) {
      plan_.losing.push_back(ViewAs<IZDMObjMgr>(reference.from));
    } else {
      plan_.dangling.push_back(reference);
    }
  }

  CZDocument& document_;
  const Records records_;
  DiffusibleTargets targets_;
  Deletion plan_;
};

/// Removal by status leaves managers where they are, so each list that has some is gone through
/// once more.
void RemoveManagers(const std::vector<ZRefPtr<IZDMObject>>& deleted) {
  std::unordered_set<IZDMObject*> owners;
  for (IZDMObject* object : deleted) {
    if (ViewAs<IZDMObjMgr>(object) != nullptr) owners.insert(object->GetOwner());
  }
  for (IZDMObject* object : owners) {
    auto* owner = ViewAs<IZDMObjMgr>(object);
    if (owner == nullptr) continue;
    for (LONGLONG pos = owner->GetHeadPosition(); pos != 0;) {
      const LONGLONG at = pos;
      if (HasStatus(owner->GetNext(pos), ZOS_DELETED)) owner->RemoveAt(at);
    }
  }
}

}  // namespace

Deletion PlanDeletion(CZDocument& document, const std::vector<IZDMObject*>& objects) {
  Deletion plan = Planner(document, objects).Plan();
  std::ranges::stable_sort(plan.obstacles, {},
                           [](const Obstacle& obstacle) { return obstacle.object->GetID(); });
  return plan;
}

void CarryOut(CZDocument& document, const Deletion& plan) {
  if (!plan.obstacles.empty() || plan.objects.empty()) return;
  const std::vector<ZRefPtr<IZDMObject>> held(plan.objects.begin(), plan.objects.end());
  for (IZDMObjMgr* manager : plan.losing) manager->SetCurrent(nullptr);
  for (IZDMObject* object : held) {
    object->SetStatus(ZOS_DELETED);
    object->SetObjectValid(false);
  }
  document.GetOIDManager()->Clean();
  RemoveManagers(held);
  document.SetModified(true);
}

}  // namespace zdm
