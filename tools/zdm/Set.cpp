#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  LONG id = 0;
  std::string assignment;
};

void SetName(const Context& context, const Options& options) {
  constexpr std::string_view kKey = "name=";
  if (!options.assignment.starts_with(kKey)) {
    throw Failure(kUsage, "not of the form name=TEXT: " + options.assignment);
  }
  const std::string name = options.assignment.substr(kKey.size());
  Document document = Open(options.file);
  IZDMObject* object = Require(document, options.id);
  object->SetName(FromUtf8(name).c_str());
  if (NameOf(*object) != Json(name)) {
    throw Failure(kRefused, "object " + std::to_string(options.id) + " does not take the name");
  }
  Save(document);
  if (context.json) PrintJson(Brief(*object->GetOID()));
}

}  // namespace

void AddSet(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "set", "Change an object");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->id, "The object; -1 is the document");
  command.Argument("CHANGE", options->assignment, "name=TEXT gives it that name");
  command.Footer("Example:\n  zdm set house.zdm 2 'name=North wall'");
  command.Run([&context, options] { SetName(context, *options); });
}

}  // namespace zdm::tool
