// Gathers the records that an object refers to directly, through any of its relations and
// parameters: one walk in place of one for each possible target. Answers as the direct-reference
// visitor does for ZR_ALL. Lives on the stack.
#pragma once

#include "zdm/relations/ZReltnVisitor.h"

#include <unordered_set>

class OID;

namespace zdm {

class ReferenceCollector : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  /// The records (borrowed) that `object` refers to.
  static std::unordered_set<const OID*> TargetsOf(IZDMObject* object);

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 private:
  std::unordered_set<const OID*> targets_;
};

}  // namespace zdm
