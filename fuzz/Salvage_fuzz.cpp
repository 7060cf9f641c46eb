// A damaged document: the ledger accounts for every byte and every object, and what was got out of
// it is a document that is saved and opens.
#include "document/CZDMMaterial.h"
#include "document/CZDMMaterialMgr.h"
#include "document/DocumentError.h"
#include "document/Salvage.h"
#include "fuzz/DocumentFile.h"
#include "platform/ole/Bstr.h"
#include "zdm/categories/CZDMCategoryMgr.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

using zdm::fuzz::Require;

namespace {

/// Objects that the ledger does not name: the manager of what has no owner, and what a document
/// without its root is given. There is at most one of each.
class MadeBySalvage {
 public:
  bool Take(IZDMObject* object) {
    zdm::Bstr name;
    object->GetName(name.Out());
    if (name.View() == OLESTR("Recovered")) return true;
    const GUID classId = object->GetZRID();
    if (classId == CZDMMaterial::kClassID && name.View() != zdm::kDefaultMaterialName) return false;
    const auto* const known = std::ranges::find(kClasses, classId);
    return known != std::end(kClasses) && std::exchange(isLeft_[known - kClasses], false);
  }

 private:
  static constexpr GUID kClasses[] = {CZDMMaterialMgr::kClassID, CZDMMaterial::kClassID,
                                      CZDMCategoryMgr::kClassID};
  bool isLeft_[std::size(kClasses)] = {true, true, true};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zdm::Salvaged salvaged;
  try {
    salvaged = zdm::Salvage(std::span<const BYTE>(data, size));
  } catch (const zdm::DocumentError& error) {
    Require(error.Fault() == zdm::DocumentFault::kNotDocument ||
                error.Fault() == zdm::DocumentFault::kNewerFormat,
            "only what is no document is refused");
    return 0;
  }
  ULONGLONG end = 0;
  for (const zdm::FileRange& range : salvaged.ledger.ranges) {
    Require(range.begin == end && range.end > end, "ranges tile the file");
    end = range.end;
  }
  Require(end == size, "ranges cover the file");
  std::set<LONG> accounted;
  for (const auto& object : salvaged.ledger.objects) accounted.insert(object.id);
  MadeBySalvage made;
  for (const OID* oid : salvaged.document->GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr) continue;
    Require(oid->JudgeStatus(ZOS_VALID), "what is there is valid");
    Require(accounted.contains(oid->ID) || made.Take(oid->Object), "every object is accounted for");
  }
  salvaged.ledger.ToJson();
  zdm::fuzz::RequireRoundTrip(*salvaged.document);
  return 0;
}
