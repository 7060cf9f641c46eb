#include "tools/zdm/Terminal.h"

#include "platform/ole/ole.h"
#include "platform/system/Text.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <unistd.h>

#include <csignal>
#endif

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace zdm::tool {

#if defined(_WIN32)

std::vector<std::string> Arguments(int, char**) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; wide != nullptr && i < count; ++i) arguments.push_back(ToUtf8(wide[i]));
  LocalFree(wide);
  return arguments;
}

bool IsTerminal(std::FILE* file) { return _isatty(_fileno(file)) != 0; }

Utf8Output::Utf8Output() : formerCodePage_(GetConsoleOutputCP()) {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
}

Utf8Output::~Utf8Output() { SetConsoleOutputCP(formerCodePage_); }

namespace {

constexpr char kPathSeparator = ';';
constexpr const char* kProgramEnding = ".exe";

std::FILE* OpenPipe(const std::string& command) { return _popen(command.c_str(), "wb"); }
int ClosePipe(std::FILE* pipe) { return _pclose(pipe); }

}  // namespace

#else

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsTerminal(std::FILE* file) { return isatty(fileno(file)) != 0; }

/// Also: a reader that went away ends us with an error and not with a signal.
Utf8Output::Utf8Output() { std::signal(SIGPIPE, SIG_IGN); }
Utf8Output::~Utf8Output() = default;

namespace {

constexpr char kPathSeparator = ':';
constexpr const char* kProgramEnding = "";

std::FILE* OpenPipe(const std::string& command) { return popen(command.c_str(), "w"); }
int ClosePipe(std::FILE* pipe) { return pclose(pipe); }

}  // namespace

#endif

bool IsInstalled(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, kPathSeparator);) {
    std::error_code failed;
    const auto file = std::filesystem::path(folder) / (program + kProgramEnding);
    if (std::filesystem::is_regular_file(file, failed)) return true;
  }
  return false;
}

bool Pipe(const std::string& command, const std::string& input) {
  std::fflush(stdout);
  std::FILE* pipe = OpenPipe(command);
  if (pipe == nullptr) return false;
  const bool isWritten = std::fwrite(input.data(), 1, input.size(), pipe) == input.size();
  return ClosePipe(pipe) == 0 && isWritten;
}

}  // namespace zdm::tool
