// The process's surroundings: its arguments as UTF-8, and whether somebody watches its output.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace zdm::tool {

/// The arguments, without the program's name.
std::vector<std::string> Arguments(int argc, char** argv);

/// The file is a terminal (a console on Windows).
bool IsTerminal(std::FILE* file);

/// Makes output UTF-8 with plain line ends while it lives.
class Utf8Output {
 public:
  Utf8Output();
  ~Utf8Output();
  Utf8Output(const Utf8Output&) = delete;
  Utf8Output& operator=(const Utf8Output&) = delete;

 private:
  unsigned formerCodePage_ = 0;
};

/// A program of that name, without ending, can be run.
bool IsInstalled(const std::string& program);

/// Runs `command`, which writes to our output, and gives it `input`. False when it failed.
bool Pipe(const std::string& command, const std::string& input);

}  // namespace zdm::tool
