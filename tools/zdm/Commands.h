// The subcommands of the command line, each in a file of its own. An Add… function declares one and
// binds what it runs; what fails throws Failure or DocumentError, and main.cpp ends with its code.
#pragma once

#include "tools/zdm/Command.h"
#include "tools/zdm/ExitCodes.h"

namespace zdm::tool {

/// What all subcommands share.
struct Context {
  bool json = false;  // print JSON instead of text
  ExitCode exitCode = kDone;
};

// Making and changing documents.
void AddNew(CLI::App& app, Context& context);
void AddAdd(CLI::App& app, Context& context);
void AddRelate(CLI::App& app, Context& context);
void AddSet(CLI::App& app, Context& context);
void AddDelete(CLI::App& app, Context& context);

// Drawings in and out of them.
void AddImport(CLI::App& app, Context& context);
void AddExport(CLI::App& app, Context& context);
void AddView(CLI::App& app, Context& context);

// Looking at them.
void AddInfo(CLI::App& app, Context& context);
void AddTree(CLI::App& app, Context& context);
void AddCategories(CLI::App& app, Context& context);
void AddShow(CLI::App& app, Context& context);
void AddDefinitions(CLI::App& app, Context& context);
void AddRefs(CLI::App& app, Context& context);
void AddDump(CLI::App& app, Context& context);
void AddGraph(CLI::App& app, Context& context);

// Their health.
void AddAudit(CLI::App& app, Context& context);
void AddRecover(CLI::App& app, Context& context);

// The library.
void AddClasses(CLI::App& app, Context& context);
void AddCreate(CLI::App& app, Context& context);

}  // namespace zdm::tool
