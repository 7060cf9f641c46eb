// Runs a program's operations on W(n) and prints one JSON object per n:
//   {"program":"plain","n":1000,"reps":9,"build":{"ns":…,"min":…,"max":…},…,"memory_bytes":…,
//    "check_walk":…}
// Every repetition is a process of its own, which first runs everything on W(10), untimed. A build
// process makes the document and its file, a use process works on that file. The median counts.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace workload {

/// Keeps the compiler from leaving out the work whose result nobody else reads.
template <class T>
void Use(const T& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

/// What one process has measured.
class Measures {
 public:
  /// Times an operation; one under 2 ms is repeated for 5 ms, each time after an untimed `again`.
  template <class Operation, class Again>
  void Time(const char* name, Operation operation, Again again) {
    double total = Run(operation);
    int count = 1;
    if (total < 2e6) {
      for (; total < 5e6; ++count) {
        again();
        total += Run(operation);
      }
    }
    AddTime(name, total / count);
  }
  template <class Operation>
  void Time(const char* name, Operation operation) {
    Time(name, operation, [] {});
  }
  void AddTime(const std::string& name, double ns) { times_.emplace_back(name, ns); }
  /// A figure that is no time; check values are those whose name begins with "check_".
  void Add(const std::string& name, double value) { values_.emplace_back(name, value); }

  const auto& Times() const { return times_; }
  const auto& Values() const { return values_; }

 private:
  template <class Operation>
  static double Run(Operation& operation) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
        .count();
  }

  std::vector<std::pair<std::string, double>> times_;
  std::vector<std::pair<std::string, double>> values_;
};

/// A program that is measured.
class Program {
 public:
  virtual ~Program() = default;
  virtual std::string Name() const = 0;
  virtual void Build(std::uint32_t n, const std::filesystem::path& file, Measures& out) = 0;
  virtual void Use(std::uint32_t n, const std::filesystem::path& file, Measures& out) = 0;
};

/// Resident size of this process.
double ResidentBytes();

/// `arguments`: [--reps N] [--dir FOLDER] [N…], by default 1000 10000 100000; `own` is what the
/// program has taken from its command line for itself.
int Main(Program& program, const char* self, std::vector<std::string> arguments,
         const std::vector<std::string>& own = {});

}  // namespace workload
