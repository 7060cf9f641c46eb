#include "document/DocumentReader.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/DrawingInfo.h"
#include "tools/zdm/OpenDocument.h"

#include <memory>

namespace zdm::tool {

namespace {

/// Also of a document whose objects cannot be read: then nothing is said of its drawing.
Json DrawingOf(const std::string& file) try {
  const Document document = Open(file);
  return DrawingInfo(*document.Get());
} catch (const DocumentError&) {
  return Json::object();
}

void PrintInfo(const Context& context, const std::string& file) {
  const DocumentInfo info = DocumentReader(PathOf(file)).GetInfo();
  std::error_code failed;
  Json fields = {{"fileBytes", std::filesystem::file_size(PathOf(file), failed)},
                 {"formatVersion", info.formatVersion},
                 {"ids", info.ids},
                 {"records", info.objects},
                 {"embedded", info.embedded},
                 {"recordStreams", info.chunks},
                 {"recordBytes", info.recordBytes},
                 {"largestRecord", info.largestRecord},
                 {"lowestId", info.lowestId},
                 {"highestId", info.highestId}};
  fields.update(DrawingOf(file));
  if (context.json) return PrintJson(fields);
  for (const std::string& line : Lines(fields)) PrintLine(line);
}

}  // namespace

void AddInfo(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  Command command(app, "info", "What the file says of itself, and what its drawing holds");
  command.Argument("FILE", *file, "The document");
  command.Footer("Example:\n  zdm info house.zdm --json");
  command.Run([&context, file] { PrintInfo(context, *file); });
}

}  // namespace zdm::tool
