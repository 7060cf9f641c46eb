// The subcommands of the command line. Each Add… function declares one and binds what it runs.
#pragma once

#include <CLI/CLI.hpp>

namespace zdm::tool {

// Exit codes, alike for every subcommand.
constexpr int kDone = 0;
constexpr int kFailed = 1;  // the work could not be done; one line on stderr says why
constexpr int kUsage = 2;   // the command line was wrong

/// What all subcommands share.
struct Context {
  bool json = false;  // print JSON instead of text
  int exitCode = kDone;
};

/// `zdm classes`: the class table.
void AddClasses(CLI::App& app, Context& context);
/// `zdm create CLASS-ID`: a new object from the factory, and what it answers to.
void AddCreate(CLI::App& app, Context& context);

}  // namespace zdm::tool
