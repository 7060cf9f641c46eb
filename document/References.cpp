#include "document/References.h"

#include "document/CZDocument.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <algorithm>
#include <span>

namespace zdm {

namespace {

/// Lives on the stack.
class Lister : public ZReltnVisitor<IZReltnVisitor> {
 public:
  using IZReltnVisitorImpl::Visit;

  explicit Lister(std::vector<Reference>* out) : out_(*out) {}
  void List(IZDMObject* object);

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override;
  bool MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) override;
  bool MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) override;

 private:
  void Add(IZDMObject* from, OID* to, ReferenceVia via) {
    if (to != nullptr) out_.push_back({from, to, via, outermost_});
  }

  std::vector<Reference>& out_;
  IZRelation* outermost_ = nullptr;
};

/// In a walk the parameters come first, where the object offers them at all.
void Lister::List(IZDMObject* object) {
  const std::size_t first = out_.size();
  object->VisitReferences(object, this);
  std::vector<Reference> inParameters;
  if (IZParameterArray* parameters = object->PeekParameterArray()) {
    Lister lister(&inParameters);
    parameters->Accept(object, object, &lister);
  }
  const std::span<Reference> walked = std::span(out_).subspan(first);
  const auto isSame = [](const Reference& a, const Reference& b) { return a.to == b.to; };
  if (walked.size() >= inParameters.size() &&
      std::equal(inParameters.begin(), inParameters.end(), walked.begin(), isSame)) {
    for (Reference& reference : walked.first(inParameters.size())) {
      if (reference.via == ReferenceVia::kRelation) reference.via = ReferenceVia::kParameter;
    }
  }
  if (auto* parameter = ViewAs<IZParameter>(object)) {  // no walk reaches what it refers to itself
    const std::size_t before = out_.size();
    parameter->Accept(object, object, this);
    for (Reference& reference : std::span(out_).subspan(before)) {
      reference.via = ReferenceVia::kParameter;
    }
  }
  auto* manager = ViewAs<IZDMObjMgr>(object);
  IZDMObject* current = manager != nullptr ? manager->GetCurrent() : nullptr;
  if (current != nullptr) {
    out_.push_back({object, current->GetOID(), ReferenceVia::kCurrent, nullptr});
  }
}

bool Lister::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn == nullptr) return false;
  IZRelation* const former = outermost_;
  if (former == nullptr) outermost_ = reltn;
  reltn->Accept(root, owner, this);
  outermost_ = former;
  return false;
}

bool Lister::MapOID(IZDMObject*, IZDMObject* owner, IZRelation*, OID** oid) {
  Add(owner, *oid, ReferenceVia::kRelation);
  return false;
}

bool Lister::MapPID(IZDMObject*, IZDMObject* owner, IZRelation*, PID** pid) {
  if (*pid == nullptr) return false;
  for (OID* oid : (*pid)->OIDs) Add(owner, oid, ReferenceVia::kPath);
  return false;
}

}  // namespace

const char* NameOf(ReferenceVia via) {
  constexpr const char* kNames[] = {"relation", "parameter", "path", "current"};
  return kNames[static_cast<std::size_t>(via)];
}

std::vector<Reference> ReferencesOf(IZDMObject* object) {
  std::vector<Reference> references;
  Lister(&references).List(object);
  return references;
}

std::vector<Reference> ReferencesTo(CZDocument& document, const OID* target) {
  std::vector<Reference> found;
  std::vector<Reference> references;
  Lister lister(&references);
  const auto look = [&](IZDMObject* object) {
    references.clear();
    lister.List(object);
    for (const Reference& reference : references) {
      if (reference.to == target) found.push_back(reference);
    }
  };
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) look(oid->Object);
  }
  look(&document);
  return found;
}

}  // namespace zdm
