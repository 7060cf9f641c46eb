#include "platform/system/Text.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::string name;
};

void MakeDocument(const Context& context, const Options& options) {
  RequireNoFile(options.file);
  Document document = Document::Create(FromUtf8(options.name));
  document.Save(PathOf(options.file));
  if (context.json) PrintJson({{"file", options.file}, {"id", kRootID}, {"name", options.name}});
}

}  // namespace

void AddNew(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "new", "Make a document, with the default material and no categories");
  command.Argument("FILE", options->file, "The file to make; there must be none");
  command.Option("--name", options->name, "The document's name");
  command.Footer("Example:\n  zdm new house.zdm --name House");
  command.Run([&context, options] { MakeDocument(context, *options); });
}

}  // namespace zdm::tool
