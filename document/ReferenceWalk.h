// What belongs to a walk over everything that an object refers to: what VisitReferences offers,
// what a parameter of the document refers to itself, which no walk reaches, and the current object
// of a manager. Relations below relations are followed to the depth to which they are copied.
// Lives on the stack.
#pragma once

#include "document/References.h"
#include "zdm/relations/ZReltnVisitor.h"

namespace zdm {

class ReferenceWalk : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  void Walk(IZDMObject* object);

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 protected:
  /// Told of every record in its order; never null. What an object's array of parameters refers to
  /// comes as kRelation.
  virtual void Meet(IZDMObject* from, OID* record, ReferenceVia via) = 0;
  /// The relation of the object that is walked now; null for none.
  IZRelation* GetOutermost() const { return outermost_; }

 private:
  ReferenceVia via_ = ReferenceVia::kRelation;
  IZRelation* outermost_ = nullptr;
  int depth_ = 0;
};

}  // namespace zdm
