// A damaged document: the ledger accounts for every byte and every object, and what was got out of
// it is a document that is saved and opens.
#include "document/DocumentError.h"
#include "document/Salvage.h"
#include "fuzz/DocumentFile.h"
#include "platform/system/Text.h"
#include "zdm/identity/OID.h"

#include <set>

using zdm::fuzz::Require;

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
  for (const OID* oid : salvaged.document->GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr) continue;
    Require(oid->JudgeStatus(ZOS_VALID), "what is there is valid");
    BSTR name = nullptr;
    oid->Object->GetName(&name);
    const bool isRecovered = zdm::WideView(name, SysStringLen(name)) == OLESTR("Recovered");
    SysFreeString(name);
    Require(accounted.contains(oid->ID) || isRecovered, "every object is accounted for");
  }
  salvaged.ledger.ToJson();
  zdm::fuzz::RequireRoundTrip(*salvaged.document);
  return 0;
}
