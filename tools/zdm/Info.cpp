#include "document/DocumentReader.h"
#include "drawing/CZDMDrawing.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/DrawingInfo.h"
#include "tools/zdm/OpenDocument.h"

#include <exception>
#include <memory>

namespace zdm::tool {

namespace {

void PrintInfo(const Context& context, const std::string& file) {
  DocumentReader reader(PathOf(file));
  const DocumentInfo info = reader.GetInfo();
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
  // What the index says is told also when objects cannot be read, and objects are loaded only for
  // what is to be counted in a drawing.
  std::exception_ptr damage;
  try {
    if (reader.HasRecordOf(CZDMDrawing::kClassID)) fields.update(DrawingInfo(*Open(file).Get()));
  } catch (const DocumentError&) {
    damage = std::current_exception();
  }
  if (context.json) {
    PrintJson(fields);
  } else {
    for (const std::string& line : Lines(fields)) PrintLine(line);
  }
  if (damage != nullptr) std::rethrow_exception(damage);
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
