#include "tools/zdm/Command.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace zdm::tool {

Command::Command(CLI::App& app, const char* name, const char* what)
    : command_(*app.add_subcommand(name, what)) {}

void Command::Argument(const char* name, std::string& value, const char* what) {
  command_.add_option(name, value, what)->required();
}

void Command::Argument(const char* name, LONG& value, const char* what) {
  command_.add_option(name, value, what)->required();
}

void Command::Argument(const char* name, std::vector<LONG>& value, const char* what) {
  command_.add_option(name, value, what)->required();
}

void Command::Argument(const char* name, std::vector<std::string>& value, const char* what) {
  command_.add_option(name, value, what)->required();
}

void Command::Argument(const char* name, std::optional<LONG>& value, const char* what) {
  command_.add_option(name, value, what);
}

void Command::Option(const char* name, std::string& value, const char* what) {
  command_.add_option(name, value, what);
}

void Command::Required(const char* name, std::string& value, const char* what) {
  command_.add_option(name, value, what)->required();
}

void Command::Option(const char* name, LONG& value, const char* what) {
  command_.add_option(name, value, what);
}

void Command::Flag(const char* name, bool& value, const char* what) {
  command_.add_flag(name, value, what);
}

void Command::Footer(const char* text) { command_.footer(text); }

void Command::Run(std::function<void()> run) { command_.callback(std::move(run)); }

}  // namespace zdm::tool
