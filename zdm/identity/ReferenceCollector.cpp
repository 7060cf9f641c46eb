#include "zdm/identity/ReferenceCollector.h"

#include "zdm/identity/PID.h"
#include "zdm/model/IZDMObject.h"

#include <utility>

namespace zdm {

std::unordered_set<const OID*> ReferenceCollector::TargetsOf(IZDMObject* object) {
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
