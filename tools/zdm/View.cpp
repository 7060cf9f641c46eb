#include "drawing/Svg.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <cstdio>
#include <fstream>
#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string document;
  std::string picture;
};

void View(const Context& context, const Options& options) {
  const Document document = Open(options.document);
  const std::string svg = SvgOf(RequireDrawing(document), *document->GetPIDManager());
  if (options.picture.empty()) {
    std::fwrite(svg.data(), 1, svg.size(), stdout);
    return;
  }
  std::ofstream file(PathOf(options.picture), std::ios::binary | std::ios::trunc);
  file.write(svg.data(), static_cast<std::streamsize>(svg.size()));
  file.close();
  if (!file) throw Failure(kNoAccess, options.picture + ": cannot be written");
  if (context.json) PrintJson({{"file", options.picture}, {"bytes", svg.size()}});
}

}  // namespace

void AddView(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "view", "A picture of the drawing of a document (SVG)");
  command.Argument("FILE", options->document, "The document");
  command.Option("-o,--output", options->picture,
                 "The picture, in place of any there; else printed");
  command.Footer("Example:\n  zdm view plan.zdm -o plan.svg");
  command.Run([&context, options] { View(context, *options); });
}

}  // namespace zdm::tool
