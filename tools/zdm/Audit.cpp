#include "document/Audit.h"

#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"

#include <algorithm>
#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  bool repair = false;
};

Json Rows(const std::vector<Finding>& findings) {
  Json rows = Json::array();
  for (const Finding& finding : findings) {
    rows.push_back({{"code", zdm::NameOf(finding.code)},
                    {"severity", zdm::NameOf(finding.severity)},
                    {"object", finding.object != 0 ? Json(finding.object) : Json()},
                    {"place", finding.place},
                    {"canBeRepaired", finding.canBeRepaired}});
  }
  return rows;
}

Colour ColourOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return Colour::kRed;
    case Severity::kWarning:
      return Colour::kYellow;
    default:
      return Colour::kDim;
  }
}

void PrintFindings(const std::vector<Finding>& findings, const char* remark) {
  for (const Finding& finding : findings) {
    std::string line = Painted(ColourOf(finding.severity), zdm::NameOf(finding.severity));
    line += std::string(" ") + zdm::NameOf(finding.code);
    if (finding.object != 0) line += " at object " + std::to_string(finding.object);
    if (!finding.place.empty()) line += ", " + Escaped(finding.place);
    if (finding.canBeRepaired) line += remark;
    PrintLine(line);
  }
}

void AuditDocument(Context& context, const Options& options) {
  Document document = Open(options.file);
  std::vector<Finding> repaired;
  if (options.repair) repaired = Repair(*document.Get());
  const std::vector<Finding> findings = Audit(*document.Get());
  if (!repaired.empty()) Save(document);
  const bool isSound = std::ranges::none_of(
      findings, [](const Finding& finding) { return finding.severity == Severity::kError; });
  if (!isSound) context.exitCode = kUnsound;
  if (context.json) {
    return PrintJson(
        {{"sound", isSound}, {"repaired", Rows(repaired)}, {"findings", Rows(findings)}});
  }
  PrintFindings(repaired, ": repaired");
  PrintFindings(findings, " (can be repaired)");
  if (findings.empty()) PrintLine("nothing found");
}

}  // namespace

void AddAudit(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "audit", "Look for what is not as it should be");
  command.Argument("FILE", options->file, "The document");
  command.Flag("--repair", options->repair,
               "Repair what can be repaired, and save if anything was");
  command.Footer(
      "Ends with 12 when errors are left; warnings and notes are none.\n"
      "Examples:\n"
      "  zdm audit house.zdm\n"
      "  zdm audit house.zdm --repair --json");
  command.Run([&context, options] { AuditDocument(context, *options); });
}

}  // namespace zdm::tool
