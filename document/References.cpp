#include "document/References.h"

#include "document/CZDocument.h"
#include "document/ReferenceWalk.h"
#include "zdm/identity/OID.h"
#include "zdm/parameters/IZParameterArray.h"

#include <algorithm>
#include <span>

namespace zdm {

namespace {

/// Lives on the stack.
class Lister : public ReferenceWalk {
 public:
  explicit Lister(std::vector<Reference>* out) : out_(*out) {}
  void List(IZDMObject* object);

 protected:
  void Meet(IZDMObject* from, OID* record, ReferenceVia via) override {
    out_.push_back({from, record, via, GetOutermost()});
  }

 private:
  std::vector<Reference>& out_;
};

/// In a walk the parameters come first, where the object offers them at all.
void Lister::List(IZDMObject* object) {
  const std::size_t first = out_.size();
  Walk(object);
  IZParameterArray* parameters = object->PeekParameterArray();
  if (parameters == nullptr) return;
  std::vector<Reference> inParameters;
  Lister lister(&inParameters);
  parameters->Accept(object, object, &lister);
  const std::span<Reference> walked = std::span(out_).subspan(first);
  const auto isSame = [](const Reference& a, const Reference& b) { return a.to == b.to; };
  if (walked.size() < inParameters.size() ||
      !std::equal(inParameters.begin(), inParameters.end(), walked.begin(), isSame)) {
    return;
  }
  for (Reference& reference : walked.first(inParameters.size())) {
    if (reference.via == ReferenceVia::kRelation) reference.via = ReferenceVia::kParameter;
  }
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
