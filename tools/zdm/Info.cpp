#include "document/DocumentReader.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"

#include <memory>

namespace zdm::tool {

namespace {

void PrintInfo(const Context& context, const std::string& file) {
  const DocumentInfo info = DocumentReader(PathOf(file)).GetInfo();
  std::error_code failed;
  const Json fields = {{"fileBytes", std::filesystem::file_size(PathOf(file), failed)},
                       {"formatVersion", info.formatVersion},
                       {"ids", info.ids},
                       {"objects", info.objects},
                       {"embedded", info.embedded},
                       {"recordStreams", info.chunks},
                       {"recordBytes", info.recordBytes},
                       {"largestRecord", info.largestRecord},
                       {"lowestId", info.lowestId},
                       {"highestId", info.highestId}};
  if (context.json) return PrintJson(fields);
  for (const std::string& line : Lines(fields)) PrintLine(line);
}

}  // namespace

void AddInfo(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  Command command(app, "info", "What the file says of itself; reads the index, loads no object");
  command.Argument("FILE", *file, "The document");
  command.Footer("Example:\n  zdm info house.zdm --json");
  command.Run([&context, file] { PrintInfo(context, *file); });
}

}  // namespace zdm::tool
