#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <array>
#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::string other;
  std::string out;
  bool replace = false;
  bool add = false;
  bool dryRun = false;
};

constexpr std::array<const char*, 5> kDecisions = {"same", "replaced", "added", "merged",
                                                   "left out"};

const char* TextOf(MergeDecision decision) {
  return kDecisions[static_cast<std::size_t>(decision)];
}

Json Described(const MergeReport& report, bool isSaved) {
  Json objects = Json::array();
  for (const auto& [source, decision, id] : report.objects) {
    objects.push_back({{"id", source->GetOID()->ID},
                       {"decision", TextOf(decision)},
                       {"target", id != 0 ? Json(id) : Json()}});
  }
  Json replaced = Json::array();
  for (const auto& [id, data] : report.replaced) {
    replaced.push_back({{"id", id}, {"formerName", NameOf(*data)}});
  }
  Json cut = Json::array();
  for (const auto& [from, to, via, fate] : report.cut) {
    cut.push_back({{"from", from->GetOID()->ID}, {"to", to->ID}, {"via", zdm::NameOf(via)}});
  }
  return {{"saved", isSaved},
          {"objects", std::move(objects)},
          {"replaced", std::move(replaced)},
          {"cut", std::move(cut)}};
}

void PrintReport(const MergeReport& report) {
  std::array<std::size_t, kDecisions.size()> counts = {};
  for (const auto& [source, decision, id] : report.objects) {
    ++counts[static_cast<std::size_t>(decision)];
    if (decision == MergeDecision::kSame || decision == MergeDecision::kDescend) continue;
    std::string line = std::string(TextOf(decision)) + ": " + BriefLine(*source->GetOID());
    if (id != 0) line += " as " + std::to_string(id);
    PrintLine(line);
  }
  for (const auto& [from, to, via, fate] : report.cut) {
    PrintLine(Painted(Colour::kYellow, "cut") + ": " + BriefLine(*from->GetOID()) +
              " no longer refers to " + std::to_string(to->ID) + " through " + zdm::NameOf(via));
  }
  std::string line;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    line += (line.empty() ? "" : ", ") + std::to_string(counts[i]) + ' ' + kDecisions[i];
  }
  PrintLine(line);
}

void MergeDocuments(const Context& context, const Options& options) {
  if (options.replace && options.add)
    throw Failure(kUsage, "--replace and --add exclude each other");
  if (options.out.empty() && !options.dryRun) throw Failure(kUsage, "-o is missing");
  if (!options.dryRun) RequireNoFile(options.out);
  Document document = Open(options.file);
  const Document other = Open(options.other);
  const eZMergeOption counterparts = options.replace ? ZMO_REPLACE
                                     : options.add   ? ZMO_ADD
                                                     : ZMO_SAME;
  const MergeReport report =
      document.Merge(other, {.counterparts = counterparts, .choose = {}, .dryRun = options.dryRun});
  if (!options.dryRun) document.Save(PathOf(options.out));
  if (context.json) return PrintJson(Described(report, !options.dryRun));
  PrintReport(report);
}

}  // namespace

void AddMerge(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "merge", "Take the objects of another document into one");
  command.Argument("FILE", options->file, "The document");
  command.Argument("OTHER", options->other, "The document whose objects it takes in");
  command.Option("-o", options->out, "The file to save the outcome as; there must be none");
  command.Flag("--replace", options->replace, "What both have gets the data of OTHER");
  command.Flag("--add", options->add, "What both have is there twice afterwards");
  command.Flag("--dry-run", options->dryRun, "Only name what would happen");
  command.Footer(
      "What both have stays as it is in FILE, without --replace and --add; managers of one class\n"
      "and name are merged, and what has a negative ID stays in any case. Names what was added or\n"
      "replaced, and every reference that was cut.\n"
      "Examples:\n"
      "  zdm merge house.zdm garden.zdm --dry-run\n"
      "  zdm merge house.zdm garden.zdm -o both.zdm");
  command.Run([&context, options] { MergeDocuments(context, *options); });
}

}  // namespace zdm::tool
