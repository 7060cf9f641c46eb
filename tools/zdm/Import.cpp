#include "drawing/Import.h"

#include "drawing/ClassTable.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::vector<std::string> files;
  std::string document;
  std::string codePage;
};

std::string SubjectOf(const Warning& warning, const TextCodec& codec) {
  return ToUtf8(codec.Show(warning.subject));
}

void PrintWarnings(const std::string& file, const ImportReport& report) {
  for (const Warning& warning : report.warnings) {
    std::string line = file + ": " + NameOf(warning.code);
    if (warning.line != 0) line += ", line " + std::to_string(warning.line);
    if (!warning.subject.empty()) line += ", " + Quoted(SubjectOf(warning, report.codec));
    if (warning.count > 1) line += ", and " + std::to_string(warning.count - 1) + " more";
    PrintWarning(line);
  }
}

Json ToJson(const std::string& file, const ImportReport& report) {
  Json warnings = Json::array();
  for (const Warning& warning : report.warnings) {
    warnings.push_back({{"code", NameOf(warning.code)},
                        {"count", warning.count},
                        {"line", warning.line},
                        {"subject", Escaped(SubjectOf(warning, report.codec))}});
  }
  return {{"file", file}, {"objects", report.made}, {"warnings", std::move(warnings)}};
}

/// Into the document that is there, or a new one.
void Import(const Context& context, const Options& options) {
  std::error_code failed;
  const bool isThere = std::filesystem::exists(PathOf(options.document), failed);
  Document document = isThere ? Open(options.document) : Document::Create();
  Json rows = Json::array();
  for (const std::string& file : options.files) {
    const ImportReport report =
        ImportDrawing(*document.Get(), PathOf(file), {.codePage = options.codePage});
    rows.push_back(ToJson(file, report));
    PrintWarnings(file, report);
    if (!context.json) PrintLine(Escaped(file) + ": " + std::to_string(report.made) + " objects");
  }
  document.Save(PathOf(options.document));
  if (context.json) PrintJson(rows);
}

}  // namespace

void AddImport(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "import", "Read drawings (ASCII DXF) into a document");
  command.Argument("FILES", options->files, "The drawings; layers and blocks of one name merge");
  command.Required("-o,--output", options->document,
                   "The document; a new one, or one that is there and gets them besides");
  command.Option("--codepage", options->codePage,
                 "Of drawings that do not name theirs, such as ANSI_1251 or GBK; else Latin-1");
  command.Footer("Example:\n  zdm import plan.dxf -o plan.zdm");
  command.Run([&context, options] { Import(context, *options); });
}

}  // namespace zdm::tool
