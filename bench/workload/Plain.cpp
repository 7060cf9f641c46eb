// The bounds that the library's figures on W(n) are put beside.
//   plain [--blocks FILE] [--reps N] [--dir FOLDER] [N…]
// Packed: the data of W(n) in a handful of arrays, with all operations. With block sizes from
// `workload_blocks`: as many linked heap blocks as the library needs, with the operations that
// make, drop and walk them. Prints what Runner.h says.
#include "bench/workload/PlainBlocks.h"
#include "bench/workload/PlainPacked.h"
#include "bench/workload/Runner.h"

#include <optional>

namespace workload {
namespace {

class PackedProgram : public Program {
 public:
  std::string Name() const override { return "plain"; }

  void Build(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    const std::vector<ObjectPlan> plans = DrawObjects(n);
    std::optional<PlainPacked> document;
    const auto fresh = [&] { document.emplace(); };
    const auto build = [&] { document->Build(plans); };
    fresh();
    out.Time("build", build, fresh);
    out.Time("save", [&] { document->Save(file); });
    out.Time(
        "close_built", [&] { document.reset(); }, [&] { fresh(), build(); });
    out.Add("file_bytes", static_cast<double>(std::filesystem::file_size(file)));
  }

  void Use(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    std::optional<PlainPacked> document;
    const auto fresh = [&] { document.emplace(); };
    const auto load = [&] { document->Load(file); };
    const double resident = ResidentBytes();
    fresh();
    load();
    out.Add("memory_bytes", ResidentBytes() - resident);
    fresh();
    out.Time("load", load, fresh);

    const std::vector<std::uint32_t> ids = LookupIDs(n);
    std::uint64_t sum = 0;
    out.Time("lookup", [&] {
      sum = 0;
      for (const std::uint32_t id : ids) sum += document->ID(document->Find(id));
    });
    out.Add("check_lookup", static_cast<double>(sum));

    const std::vector<ParamPick> picks = ParamPicks(n);
    double values = 0;
    out.Time("params", [&] {
      values = 0;
      for (const ParamPick& pick : picks)
        values += document->DoubleOf(pick.object, pick.definition);
    });
    out.Add("check_params", values);

    out.Time("walk", [&] { sum = document->Walk(); });
    out.Add("check_walk", static_cast<double>(sum));

    std::vector<PlainPacked::Position> targets;
    for (const std::uint32_t id : ReverseTargets(n)) targets.push_back(document->Find(id));
    out.Time("reverse_scan", [&] { sum = document->ReverseScan(targets.front()); });
    out.Add("check_reverse_scan", static_cast<double>(sum));
    out.Time("index", [&] { document->MakeIndex(); });
    out.Time("reverse", [&] {
      sum = 0;
      for (const PlainPacked::Position target : targets) sum += document->Reverse(target);
    });
    out.Add("check_reverse", static_cast<double>(sum));

    out.Time("depends", [&] {
      sum = 0;
      for (const std::uint32_t id : ChangedIDs(n)) sum += document->Dependents(document->Find(id));
    });
    out.Add("check_depends", static_cast<double>(sum));
    out.Time("closure", [&] { sum = document->Closure(document->LastObject()); });
    out.Add("check_closure", static_cast<double>(sum));

    const auto reload = [&] { fresh(), load(); };
    out.Time(
        "copy", [&] { document->Copy(); }, reload);
    out.Add("check_copy", static_cast<double>(document->Walk()));
    out.Time(
        "close", [&] { document.reset(); }, [&] { reload(), document->Copy(); });
  }
};

class BlocksProgram : public Program {
 public:
  explicit BlocksProgram(const std::filesystem::path& counts) : counts_(ReadBlockCounts(counts)) {}
  std::string Name() const override { return "plain-blocks"; }

  void Build(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    const std::vector<ObjectPlan> plans = DrawObjects(n);
    PlainBlocks document(counts_);
    const auto build = [&] { document.Build(plans); };
    const auto close = [&] { document.Close(); };
    out.Time("build", build, close);
    document.Save(file);
    out.Time("close_built", close, build);
  }

  void Use(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    PlainBlocks document(counts_);
    const auto load = [&] { document.Load(file); };
    const auto close = [&] { document.Close(); };
    const double resident = ResidentBytes();
    load();
    out.Add("memory_bytes", ResidentBytes() - resident);
    close();
    out.Time("load", load, close);
    std::uint64_t sum = 0;
    out.Time("walk", [&] { sum = document.Walk(); });
    out.Add("check_walk", static_cast<double>(sum));
    const std::uint32_t target = ReverseTargets(n).front();
    out.Time("reverse_scan", [&] { sum = document.ReverseScan(target); });
    out.Add("check_reverse_scan", static_cast<double>(sum));
    const auto reload = [&] { close(), load(); };
    out.Time(
        "copy", [&] { document.Copy(); }, reload);
    out.Add("check_copy", static_cast<double>(document.Walk()));
    out.Time("close", close, [&] { load(), document.Copy(); });
  }

 private:
  const std::vector<BlockCount> counts_;
};

}  // namespace
}  // namespace workload

int main(int argc, char** argv) try {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() >= 2 && arguments[0] == "--blocks") {
    const std::vector<std::string> own(arguments.begin(), arguments.begin() + 2);
    workload::BlocksProgram program(own[1]);
    return workload::Main(program, argv[0], {arguments.begin() + 2, arguments.end()}, own);
  }
  workload::PackedProgram program;
  return workload::Main(program, argv[0], arguments);
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
