#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <functional>
#include <memory>

namespace zdm::tool {

namespace {

/// The document first, then the objects in the order of the ID table.
void ForEachObject(const Document& document, const std::function<void(IZDMObject&)>& visit) {
  visit(*Require(document, kRootID));
  for (const OID* oid : document->GetOIDManager()->GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) visit(*oid->Object);
  }
}

/// Every line begins with the object's ID, so that a difference tells where it is.
void PrintDump(const Context& context, const std::string& file) {
  const Document document = Open(file);
  Json objects = Json::array();
  ForEachObject(document, [&](IZDMObject& object) {
    Json fields = Fields(*document.Get(), object);
    if (context.json) {
      objects.push_back(std::move(fields));
      return;
    }
    const std::string id = std::to_string(object.GetOID()->ID) + ' ';
    fields.erase("id");
    for (const std::string& line : Lines(fields)) PrintLine(id + line);
  });
  if (context.json) PrintJson(objects);
}

}  // namespace

void AddDump(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  Command command(app, "dump", "The whole document as text, one line a field, made for diff");
  command.Argument("FILE", *file, "The document");
  command.Footer("Example:\n  diff <(zdm dump before.zdm) <(zdm dump after.zdm)");
  command.Run([&context, file] { PrintDump(context, *file); });
}

}  // namespace zdm::tool
