#include "zdm/identity/ReferenceCollector.h"

#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObject.h"

#include <utility>

namespace zdm {

namespace {

/// Ends a walk at the first record referred to.
class FirstReference : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn != nullptr && reltn->Accept(root, owner, this);
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override { return *oid != nullptr; }
  bool MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) override {
    return *pid != nullptr && !(*pid)->OIDs.empty();
  }
};

}  // namespace

// An object that hands a walk on without its answer, as an embedded one does, never tells a
// direct-reference visitor of a reference, whatever is visited.
std::unordered_set<const OID*> ReferenceCollector::TargetsOf(IZDMObject* object) {
  if (FirstReference first; !object->VisitReferences(object, &first)) return {};
  ReferenceCollector collector;
  object->VisitReferences(object, &collector);
  collector.targets_.erase(nullptr);
  return std::move(collector.targets_);
}

bool ReferenceCollector::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  return reltn != nullptr && reltn->Accept(root, owner, this);
}

bool ReferenceCollector::MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) {
  targets_.insert(*oid);
  return false;
}

bool ReferenceCollector::MapPID(IZDMObject*, IZDMObject*, IZRelation*, PID** pid) {
  if (*pid != nullptr) targets_.insert((*pid)->OIDs.begin(), (*pid)->OIDs.end());
  return false;
}

}  // namespace zdm
