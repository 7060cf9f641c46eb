#include "document/Salvage.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Output.h"
#include "tools/zdm/Progress.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string in;
  std::string out;
};

struct Count {
  const char* what;
  std::size_t objects;
};

void PrintCounts(const SalvageLedger& ledger) {
  if (ledger.stage != SalvageStage::kSound)
    PrintLine("container: " + Escaped(ledger.containerFault));
  const Count counts[] = {{"recovered", ledger.Count(ObjectFate::kRecovered)},
                          {"kept, class absent", ledger.Count(ObjectFate::kAbsentClass)},
                          {"doubtful", ledger.Count(ObjectFate::kDoubtful)},
                          {"lost", ledger.Count(ObjectFate::kLost)},
                          {"without their manager, now in Recovered", ledger.CountOwnerless()}};
  for (const Count& count : counts) {
    if (count.objects > 0) PrintLine(std::to_string(count.objects) + ' ' + count.what);
  }
  for (const SalvagedObject& object : ledger.objects) {
    if (object.fate == ObjectFate::kLost) PrintLine("lost: " + std::to_string(object.id));
    if (object.fate == ObjectFate::kDoubtful) PrintLine("doubtful: " + std::to_string(object.id));
  }
}

void RecoverDocument(Context& context, const Options& options) {
  RequireNoFile(options.out);
  const auto bar = Attached(new ProgressBar("recovering"));
  const Salvaged salvaged = Salvage(PathOf(options.in), bar);
  salvaged.document->SaveAs(PathOf(options.out));
  const SalvageLedger& ledger = salvaged.ledger;
  const bool isWhole = ledger.Count(ObjectFate::kLost) == 0 &&
                       ledger.Count(ObjectFate::kDoubtful) == 0 && ledger.CountOwnerless() == 0;
  if (!isWhole) context.exitCode = kUnsound;
  if (context.json) return PrintJson(Json::parse(ledger.ToJson()));
  PrintCounts(ledger);
}

}  // namespace

void AddRecover(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "recover", "Get out of a damaged file what is left of its document");
  command.Argument("IN", options->in, "The damaged file; it stays as it is");
  command.Argument("OUT", options->out, "The document to make; there must be no such file");
  command.Footer(
      "With --json it prints an account of every object and of every byte.\n"
      "Ends with 12 when objects are lost, doubtful or without their manager.\n"
      "Examples:\n"
      "  zdm recover damaged.zdm whole.zdm\n"
      "  zdm recover damaged.zdm whole.zdm --json > account.json");
  command.Run([&context, options] { RecoverDocument(context, *options); });
}

}  // namespace zdm::tool
