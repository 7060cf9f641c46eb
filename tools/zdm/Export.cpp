#include "drawing/Export.h"

#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string document;
  std::string file;
  bool isForced = false;
};

void Export(const Context& context, const Options& options) {
  if (!options.isForced) RequireNoFile(options.file);
  const Document document = Open(options.document);
  ExportDrawing(RequireDrawing(document), PathOf(options.file));
  if (context.json) PrintJson({{"file", options.file}});
}

}  // namespace

void AddExport(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "export", "Write the drawing of a document as ASCII DXF");
  command.Argument("FILE", options->document, "The document");
  command.Argument("DRAWING", options->file, "The file to make");
  command.Flag("--force", options->isForced, "In place of a file that is there");
  command.Footer("Example:\n  zdm export plan.zdm copy.dxf");
  command.Run([&context, options] { Export(context, *options); });
}

}  // namespace zdm::tool
