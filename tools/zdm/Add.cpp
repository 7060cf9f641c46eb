#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::string name;
  LONG manager = kRootID;
  bool isManager = false;
};

void AddObject(const Context& context, const Options& options) {
  Document document = Open(options.file);
  auto* manager = ViewAs<IZDMObjMgr>(Require(document, options.manager));
  if (manager == nullptr) {
    throw Failure(kRefused, "object " + std::to_string(options.manager) + " is no manager");
  }
  const WideString name = FromUtf8(options.name);
  IZDMObject* added =
      options.isManager ? document.AddManager(name, manager) : document.Add(name, manager);
  const auto id = static_cast<LONG>(added->GetID());
  Save(document);
  if (context.json) {
    PrintJson({{"id", id}});
  } else {
    PrintLine(std::to_string(id));
  }
}

}  // namespace

void AddAdd(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "add", "Add a plain object, or a manager of objects");
  command.Argument("FILE", options->file, "The document");
  command.Argument("NAME", options->name, "The new object's name");
  command.Option("--in", options->manager, "ID of the manager; the document without it");
  command.Flag("--manager", options->isManager, "Add a manager");
  command.Footer(
      "Prints the new object's ID.\n"
      "Examples:\n"
      "  zdm add house.zdm 'Ground floor' --manager\n"
      "  zdm add house.zdm 'South wall' --in 1");
  command.Run([&context, options] { AddObject(context, *options); });
}

}  // namespace zdm::tool
