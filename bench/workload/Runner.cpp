#include "bench/workload/Runner.h"

#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace workload {

namespace {

constexpr std::uint32_t kWarmUp = 10;

/// Lines "time build 123.5" and "value check_walk 77" of one process.
void Print(const Measures& measures) {
  for (const auto& [name, ns] : measures.Times()) std::printf("time %s %.17g\n", name.c_str(), ns);
  for (const auto& [name, value] : measures.Values()) {
    std::printf("value %s %.17g\n", name.c_str(), value);
  }
}

int RunChild(Program& program, const std::string& part, std::uint32_t n, const std::string& file) {
  const std::string small = file + "." + part + ".small";
  Measures ignored;
  program.Build(kWarmUp, small, ignored);
  program.Use(kWarmUp, small, ignored);
  std::filesystem::remove(small);
  Measures measures;
  if (part == "build") {
    program.Build(n, file, measures);
  } else {
    program.Use(n, file, measures);
  }
  Print(measures);
  return 0;
}

/// The figures of all repetitions, by name, in the order of the first one.
struct Series {
  std::string name;
  bool isTime;
  std::vector<double> values;
};

void Collect(const std::string& command, std::vector<Series>& out) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (pipe == nullptr) throw std::runtime_error("cannot start " + command);
  char kind[8];
  char name[64];
  double value = 0;
  bool isEmpty = true;
  while (std::fscanf(pipe.get(), "%7s %63s %lg", kind, name, &value) == 3) {
    isEmpty = false;
    const auto known = std::ranges::find(out, name, &Series::name);
    Series& series = known != out.end() ? *known : out.emplace_back(Series{name, false, {}});
    series.isTime = std::strcmp(kind, "time") == 0;
    series.values.push_back(value);
  }
  if (isEmpty) throw std::runtime_error("nothing came from " + command);
}

double Median(std::vector<double>& values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

std::string ToJson(const std::string& program, std::uint32_t n, int reps,
                   std::vector<Series>& all) {
  std::ostringstream json;
  json.precision(14);
  json << "{\"program\":\"" << program << "\",\"n\":" << n << ",\"reps\":" << reps;
  for (Series& series : all) {
    const double median = Median(series.values);
    json << ",\"" << series.name << "\":";
    if (series.isTime) {
      json << "{\"ns\":" << median << ",\"min\":" << series.values.front()
           << ",\"max\":" << series.values.back() << '}';
    } else if (series.name.starts_with("check_") && series.values.front() != series.values.back()) {
      throw std::runtime_error(series.name + " differs between repetitions");
    } else {
      json << median;
    }
  }
  json << '}';
  return json.str();
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

}  // namespace

double ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double total = 0;
  double resident = 0;
  statm >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

int Main(Program& program, const char* self, std::vector<std::string> arguments,
         const std::vector<std::string>& own) try {
  if (arguments.size() == 4 && arguments[0] == "--child") {
    return RunChild(program, arguments[1], static_cast<std::uint32_t>(std::stoul(arguments[2])),
                    arguments[3]);
  }
  int reps = 0;
  std::filesystem::path folder = std::filesystem::temp_directory_path();
  std::vector<std::uint32_t> sizes;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--reps" && i + 1 < arguments.size()) {
      reps = std::stoi(arguments[++i]);
    } else if (arguments[i] == "--dir" && i + 1 < arguments.size()) {
      folder = arguments[++i];
    } else {
      sizes.push_back(static_cast<std::uint32_t>(std::stoul(arguments[i])));
    }
  }
  if (sizes.empty()) sizes = {1000, 10000, 100000};
  std::string command = Quoted(self);
  for (const std::string& argument : own) command += " " + Quoted(argument);
  for (const std::uint32_t n : sizes) {
    const std::string file =
        (folder / (program.Name() + "-" + std::to_string(getpid()) + ".bench")).string();
    const int count = reps > 0 ? reps : n <= 10000 ? 9 : 5;
    std::vector<Series> all;
    for (int i = 0; i < count; ++i) {
      for (const char* part : {"build", "use"}) {
        Collect(command + " --child " + part + " " + std::to_string(n) + " " + Quoted(file), all);
      }
    }
    std::filesystem::remove(file);
    std::printf("%s\n", ToJson(program.Name(), n, count, all).c_str());
    std::fflush(stdout);
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}

}  // namespace workload
