// A whole document, as far as its bytes can be opened: by the strict reader, else salvaged; then
// audited, repaired, saved and opened again.
#include "document/Audit.h"
#include "document/DocumentError.h"
#include "document/Salvage.h"
#include "fuzz/DocumentFile.h"

#include <algorithm>

using zdm::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const zdm::fuzz::DocumentFile file;
  file.Write(data, size);
  ZRefPtr<CZDocument> document;
  try {
    document = zdm::Salvage(file.Path()).document;
  } catch (const zdm::DocumentError&) {
    return 0;
  }
  zdm::Audit(*document);
  zdm::Repair(*document);
  Require(zdm::Repair(*document).empty(), "a second repair has nothing to do");
  const auto findings = zdm::Audit(*document);
  Require(std::ranges::none_of(findings, [](const auto& one) { return one.canBeRepaired; }),
          "what can be repaired is repaired");
  zdm::fuzz::RequireRoundTrip(*document);
  return 0;
}
