// The library's figures on W(n).
//   workload [--reps N] [--dir FOLDER] [N…]
// Prints what Runner.h says. The time that saving takes to get the file onto the disk is `flush`,
// apart from `save`.
#include "bench/workload/LibraryDocument.h"
#include "bench/workload/Runner.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <exception>

namespace {

double flushed = 0;  // nanoseconds

}  // namespace

/// In place of the system's, also for the library.
extern "C" __attribute__((visibility("default"))) int fsync(int file) {
  const auto start = std::chrono::steady_clock::now();
  const auto result = syscall(SYS_fsync, file);
  flushed +=
      std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
  return static_cast<int>(result);
}

namespace workload {
namespace {

class LibraryProgram : public Program {
 public:
  std::string Name() const override { return "zdm"; }

  void Build(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    const std::vector<ObjectPlan> plans = DrawObjects(n);
    LibraryDocument document;
    const auto build = [&] { document.Build(plans); };
    const auto close = [&] { document.Close(); };
    out.Time("build", build, close);
    TimeSave(document, file, out);
    out.Time("close_built", close, build);
    out.Add("file_bytes", static_cast<double>(std::filesystem::file_size(file)));
  }

  void Use(std::uint32_t n, const std::filesystem::path& file, Measures& out) override {
    LibraryDocument document;
    const auto load = [&] { document.Load(file); };
    const auto close = [&] { document.Close(); };
    const auto reload = [&] {
      close();
      load();
      document.FetchHandles(n);
    };
    const double resident = ResidentBytes();
    load();
    out.Add("memory_bytes", ResidentBytes() - resident);
    close();
    out.Time("load", load, close);
    document.FetchHandles(n);

    const std::vector<std::uint32_t> ids = LookupIDs(n);
    std::uint64_t sum = 0;
    out.Time("lookup", [&] { sum = document.Lookup(ids); });
    out.Add("check_lookup", static_cast<double>(sum));
    const std::vector<ParamPick> picks = ParamPicks(n);
    double values = 0;
    out.Time("params", [&] { values = document.Params(picks); });
    out.Add("check_params", values);
    out.Time("walk", [&] { sum = document.Walk(); });
    out.Add("check_walk", static_cast<double>(sum));

    const std::vector<std::uint32_t> targets = ReverseTargets(n);
    out.Time("reverse_scan", [&] { sum = document.ReverseScan(targets.front()); });
    out.Add("check_reverse_scan", static_cast<double>(sum));
    out.Time(
        "index", [&] { document.MakeIndex(); }, reload);
    out.Time("reverse", [&] { sum = document.Reverse(targets); });
    out.Add("check_reverse", static_cast<double>(sum));
    out.Time("depends", [&] {
      sum = 0;
      for (const std::uint32_t id : ChangedIDs(n)) sum += document.Dependents(id);
    });
    out.Add("check_depends", static_cast<double>(sum));
    out.Time("closure", [&] { sum = document.Closure(kFirstObject + n - 1); });
    out.Add("check_closure", static_cast<double>(sum));

    out.Time(
        "copy", [&] { document.Copy(); }, reload);
    out.Add("check_copy", static_cast<double>(document.Walk()));
    out.Time("close", close, [&] {
      reload();
      document.Copy();
    });
  }

 private:
  /// Every saving counts, so that the flush of each can be taken out.
  static void TimeSave(LibraryDocument& document, const std::filesystem::path& file,
                       Measures& out) {
    Measures whole;
    int count = 0;
    flushed = 0;
    whole.Time("save", [&] {
      document.Save(file);
      ++count;
    });
    const double flush = flushed / count;
    out.AddTime("save", whole.Times().front().second - flush);
    out.AddTime("flush", flush);
  }
};

}  // namespace
}  // namespace workload

int main(int argc, char** argv) try {
  workload::LibraryProgram program;
  return workload::Main(program, argv[0], {argv + 1, argv + argc});
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
