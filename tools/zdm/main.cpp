// The command line: inspects the library and its documents.
#include "drawing/ClassTable.h"
#include "platform/ole/CAtlException.h"
#include "platform/system/Output.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Output.h"
#include "tools/zdm/Terminal.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <vector>

namespace zdm::tool {

namespace {

constexpr const char* kFooter =
    "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 no such file, 4 no access, 5 not a document,\n"
    "6 newer format, 7 damaged, 8 disk full, 9 out of memory, 10 no such object, 11 refused,\n"
    "12 done, and errors are left, 13 done, and not the same.\n"
    "Examples:\n"
    "  zdm new house.zdm --name House\n"
    "  zdm add house.zdm 'South wall'\n"
    "  zdm tree house.zdm\n"
    "  zdm COMMAND --help";

void AddCommands(CLI::App& app, Context& context) {
  for (const auto add :
       {AddNew,    AddAdd,  AddRelate, AddSet,   AddDelete,     AddCopy,        AddMerge, AddImport,
        AddExport, AddView, AddInfo,   AddTree,  AddCategories, AddDefinitions, AddShow,  AddRefs,
        AddDump,   AddDiff, AddGraph,  AddAudit, AddRecover,    AddClasses,     AddCreate}) {
    add(app, context);
  }
}

/// Of what the library reports in a box nothing ends a command: it goes on without it.
int ShowNothing(void*, const OLECHAR*, const OLECHAR*, UINT) { return IDOK; }

ExitCode Run(std::vector<std::string> arguments) {
  SetMessageSink({&ShowNothing, nullptr});
  RegisterDrawingClasses();
  Context context;
  CLI::App app("Document data models of building and mechanical drawings.", "zdm");
  app.add_flag("--json", context.json, "Print JSON");
  app.set_version_flag("--version", "zdm " ZDM_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(kFooter);
  AddCommands(app, context);
  try {
    std::ranges::reverse(arguments);  // as the parser takes them
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {  // help or the version was asked for
      app.exit(error);
      return kDone;
    }
    const std::vector<std::string> unknown = app.remaining();
    const bool isUnknown = app.get_subcommands().empty() && !unknown.empty();
    PrintError(isUnknown ? "no such command or option: " + unknown[0] + "; --help shows them"
                         : std::string(error.what()) + "; --help shows how");
    return kUsage;
  }
  FinishOutput();
  return context.exitCode;
}

ExitCode Fail(ExitCode code, const std::string& text) {
  PrintError(text);
  return code;
}

ExitCode RunGuarded(int argc, char** argv) try {
  return Run(Arguments(argc, argv));
} catch (const Failure& failure) {
  return Fail(failure.Code(), failure.what());
} catch (const DocumentError& failure) {
  return Fail(ExitCodeOf(failure.Fault()), failure.what());
} catch (const CAtlException& failure) {
  const DocumentError error = ErrorOf(failure.m_hr, "document");
  return Fail(ExitCodeOf(error.Fault()), error.what());
} catch (const std::bad_alloc&) {
  return Fail(kNoMemory, "out of memory");
} catch (const std::exception& failure) {
  return Fail(kFailed, failure.what());
}

}  // namespace

}  // namespace zdm::tool

int main(int argc, char** argv) {
  const zdm::tool::Utf8Output output;
  return zdm::tool::RunGuarded(argc, argv);
}
