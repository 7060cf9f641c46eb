// A drawing file, as far as it is one: imported, written, imported again. What is written is read
// again as the same groups, and the document is sound.
#include "document/Audit.h"
#include "document/DocumentError.h"
#include "drawing/Export.h"
#include "drawing/GroupReader.h"
#include "drawing/Import.h"
#include "fuzz/DocumentFile.h"

#include <string_view>

namespace {

using GroupTexts = std::vector<std::pair<LONG, std::string>>;

GroupTexts GroupsOf(std::string_view bytes) {
  GroupTexts groups;
  zdm::GroupReader reader(bytes);
  for (zdm::Group group; reader.Next(group);) groups.emplace_back(group.code, group.text);
  return groups;
}

std::string Written(std::string_view bytes, const char* codePage) {
  const auto document = zdm::MakeObject<CZDocument, CZDocument>();
  const auto report = zdm::ImportDrawing(*document, bytes, "fuzz.dxf", {.codePage = codePage});
  zdm::fuzz::Require(zdm::Audit(*document).empty(), "an imported document is sound");
  return zdm::ExportDrawing(*report.drawing);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const std::string written = Written(bytes, "GBK");
    zdm::fuzz::Require(GroupsOf(Written(written, "GBK")) == GroupsOf(written),
                       "what is written comes back as it is");
  } catch (const zdm::DocumentError&) {
  }
  return 0;
}
