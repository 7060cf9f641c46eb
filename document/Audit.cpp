#include "document/Audit.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/ManagerLists.h"
#include "document/References.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace zdm {

namespace {

struct CodeInfo {
  const char* name;
  Severity severity;
  bool canBeRepaired;
};

// By FindingCode.
constexpr std::array<CodeInfo, 13> kCodes = {{
    {"ids-unsorted", Severity::kError, true},
    {"id-doubled", Severity::kError, true},
    {"no-object", Severity::kNote, false},
    {"no-manager", Severity::kError, true},
    {"many-managers", Severity::kError, true},
    {"owner-disagrees", Severity::kError, true},
    {"owner-cycle", Severity::kError, true},
    {"reference-to-nothing", Severity::kWarning, false},
    {"reference-to-invalid", Severity::kWarning, false},
    {"reference-to-deleted", Severity::kWarning, false},
    {"path-unresolved", Severity::kWarning, false},
    {"absent-class", Severity::kNote, false},
    {"counter-behind", Severity::kError, true},
}};

bool IsLive(const OID* oid) { return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID); }

class Auditor {
 public:
  explicit Auditor(CZDocument& document) : document_(document), ids_(*document.GetOIDManager()) {}

  std::vector<Finding> Run() {
    LookAtTable();
    LookAtOwners();
    LookAtReferences();
    std::ranges::stable_sort(findings_, {}, &Finding::code);
    return std::move(findings_);
  }

 private:
  void Add(FindingCode code, LONG object, std::string place = {}) {
    const CodeInfo& info = kCodes[static_cast<std::size_t>(code)];
    findings_.push_back({code, info.severity, object, std::move(place), info.canBeRepaired});
  }

  void LookAtTable() {
    const std::vector<OID*>& oids = ids_.GetOIDs();
    if (!std::ranges::is_sorted(oids, {}, &OID::ID)) Add(FindingCode::kIDsUnsorted, 0);
    std::unordered_set<LONG> seen;
    for (const OID* oid : oids) {
      if (!seen.insert(oid->ID).second) Add(FindingCode::kIDDoubled, oid->ID);
      if (oid->Object == nullptr && !IsReferredTo(oid)) Add(FindingCode::kNoObject, oid->ID);
    }
    if (ids_.AreCountersBehind()) Add(FindingCode::kCounterBehind, 0);
  }

  /// A record without an object is wanted as long as somebody refers to it.
  bool IsReferredTo(const OID* oid) {
    if (!targetsKnown_) {
      for (const OID* other : ids_.GetOIDs()) {
        if (!IsLive(other)) continue;
        for (const Reference& reference : ReferencesOf(other->Object))
          targets_.insert(reference.to);
        targets_.insert(other->Object->GetOwnerOID());
      }
      for (const Reference& reference : ReferencesOf(&document_)) targets_.insert(reference.to);
      targetsKnown_ = true;
    }
    return targets_.contains(oid);
  }

  void LookAtOwners() {
    const ManagerLists lists(document_);
    for (const OID* oid : ids_.GetOIDs()) {
      if (!IsLive(oid)) continue;
      const std::vector<ManagerLists::Place>& places = lists.Of(oid->Object);
      if (places.empty()) {
        Add(FindingCode::kNoManager, oid->ID);
      } else if (places.size() > 1) {
        Add(FindingCode::kManyManagers, oid->ID);
      } else if (places[0].manager->GetOID() != oid->Object->GetOwnerOID()) {
        const auto lister = static_cast<LONG>(places[0].manager->GetID());
        Add(FindingCode::kOwnerDisagrees, oid->ID, "listed in " + std::to_string(lister));
      }
    }
    for (const auto& ring : OwnerRings(document_)) {
      for (IZDMObject* object : ring) {
        Add(FindingCode::kOwnerCycle, static_cast<LONG>(object->GetID()));
      }
    }
  }

  void LookAtReferences() {
    for (const OID* oid : ids_.GetOIDs()) {
      if (!IsLive(oid)) continue;
      for (const Reference& reference : ReferencesOf(oid->Object)) LookAt(oid->ID, reference);
      if (dynamic_cast<CZDMAbsentObject*>(oid->Object) != nullptr) {
        Add(FindingCode::kAbsentClass, oid->ID);
      }
    }
    for (const Reference& reference : ReferencesOf(&document_)) LookAt(kRootID, reference);
  }

  void LookAt(LONG object, const Reference& reference) {
    const OID& target = *reference.to;
    const std::string place =
        std::string(NameOf(reference.via)) + " to " + std::to_string(target.ID);
    if (target.JudgeStatus(ZOS_DELETED)) {
      Add(FindingCode::kReferenceToDeleted, object, place);
    } else if (target.Object == nullptr) {
      const bool isPath = reference.via == ReferenceVia::kPath;
      Add(isPath ? FindingCode::kPathUnresolved : FindingCode::kReferenceToNothing, object, place);
    } else if (!target.JudgeStatus(ZOS_VALID)) {
      Add(FindingCode::kReferenceToInvalid, object, place);
    }
  }

  CZDocument& document_;
  COIDManager& ids_;
  std::unordered_set<const OID*> targets_;
  bool targetsKnown_ = false;
  std::vector<Finding> findings_;
};

}  // namespace

const char* NameOf(FindingCode code) { return kCodes[static_cast<std::size_t>(code)].name; }

const char* NameOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return "note";
    case Severity::kWarning:
      return "warning";
    default:
      return "error";
  }
}

std::vector<Finding> Audit(CZDocument& document) { return Auditor(document).Run(); }

}  // namespace zdm
