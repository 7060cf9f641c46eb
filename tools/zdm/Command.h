// One subcommand as it is declared: its arguments, options and what it runs. The parser behind it
// is a large header, which only Command.cpp and main.cpp include.
#pragma once

#include "platform/ole/ole.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zdm::tool {

/// The values given are written into the variables, which must live as long as `app`, before what
/// Run was given is called.
class Command {
 public:
  Command(CLI::App& app, const char* name, const char* what);

  void Argument(const char* name, std::string& value, const char* what);
  void Argument(const char* name, LONG& value, const char* what);
  /// One or more.
  void Argument(const char* name, std::vector<LONG>& value, const char* what);
  void Argument(const char* name, std::vector<std::string>& value, const char* what);
  /// May be left out.
  void Argument(const char* name, std::optional<LONG>& value, const char* what);

  void Option(const char* name, std::string& value, const char* what);
  /// An option that must be given.
  void Required(const char* name, std::string& value, const char* what);
  void Option(const char* name, LONG& value, const char* what);
  void Flag(const char* name, bool& value, const char* what);

  /// Stands below the help; examples.
  void Footer(const char* text);
  void Run(std::function<void()> run);

 private:
  CLI::App& command_;
};

}  // namespace zdm::tool
