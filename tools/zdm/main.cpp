// The command line: inspects the library and its documents.
#include "platform/ole/CAtlException.h"
#include "tools/zdm/Commands.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

int Run(int argc, char** argv) {
  zdm::tool::Context context;
  CLI::App app("Document data models of building and mechanical drawings.", "zdm");
  app.add_flag("--json", context.json, "Print JSON");
  app.set_version_flag("--version", "zdm " ZDM_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(
      "Exit codes: 0 done, 1 failed, 2 wrong usage.\n"
      "Examples:\n"
      "  zdm classes --json\n"
      "  zdm create {65808542-5A64-45F2-B71A-A6A6D03CD2D5}");
  zdm::tool::AddClasses(app, context);
  zdm::tool::AddCreate(app, context);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const std::vector<std::string> unknown = app.remaining();
    if (error.get_exit_code() != 0 && app.get_subcommands().empty() && !unknown.empty()) {
      std::fprintf(stderr, "zdm: no such command or option: %s\nRun with --help to see them.\n",
                   unknown[0].c_str());
      return zdm::tool::kUsage;
    }
    return app.exit(error) == 0 ? zdm::tool::kDone : zdm::tool::kUsage;
  }
  return context.exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const CAtlException& failure) {
    std::fprintf(stderr, "zdm: failed with 0x%08X\n", static_cast<unsigned>(failure.m_hr));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "zdm: %s\n", failure.what());
  }
  return zdm::tool::kFailed;
}
