#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  LONG id = 0;
};

void PrintObject(const Context& context, const Options& options) {
  const Document document = Open(options.file);
  const Json fields = Fields(*document.Get(), *Require(document, options.id));
  if (context.json) return PrintJson(fields);
  for (const std::string& line : Lines(fields)) PrintLine(line);
}

}  // namespace

void AddShow(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "show", "Everything that is known of one object");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->id, "The object; -1 is the document");
  command.Footer("Example:\n  zdm show house.zdm 2");
  command.Run([&context, options] { PrintObject(context, *options); });
}

}  // namespace zdm::tool
