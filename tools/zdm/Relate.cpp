#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  LONG from = 0;
  LONG to = 0;
  bool isDiffusible = false;
};

void RelateObjects(const Context& context, const Options& options) {
  Document document = Open(options.file);
  IZDMObject* from = Require(document, options.from);
  IZDMObject* to = Require(document, options.to);
  document.Relate(from, to, options.isDiffusible ? ZR_DIFFUSIBLE : ZR_NONDIFFUSIBLE);
  Save(document);
  if (!context.json) return;
  PrintJson({{"from", options.from}, {"to", options.to}, {"diffusible", options.isDiffusible}});
}

}  // namespace

void AddRelate(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "relate", "Add a relation of one object to another");
  command.Argument("FILE", options->file, "The document");
  command.Argument("FROM", options->from, "ID of the object that refers");
  command.Argument("TO", options->to, "ID of the object referred to");
  command.Flag("--diffusible", options->isDiffusible,
               "Changes of TO concern FROM, and TO is not deleted while FROM is there");
  command.Footer("Example:\n  zdm relate house.zdm 3 2 --diffusible");
  command.Run([&context, options] { RelateObjects(context, *options); });
}

}  // namespace zdm::tool
