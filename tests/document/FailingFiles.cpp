#include "FailingFiles.h"

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

namespace {

using zdm::test::FileFault;

struct {
  bool isArmed = false;
  FileFault fault = FileFault::kNone;
  int error = 0;
  int left = -1;  // operations that go well before; negative: all
  char trace[1 << 16] = {};
  std::size_t length = 0;
  std::FILE* failed = nullptr;  // what was not written to it stays told
} state;

/// Notes the operation; what is to happen at it.
FileFault At(char what) {
  if (!state.isArmed) return FileFault::kNone;
  if (state.length + 1 < sizeof(state.trace)) state.trace[state.length++] = what;
  if (state.left != 0) {
    if (state.left > 0) --state.left;
    return FileFault::kNone;
  }
  state.left = -1;
  errno = state.error;
  return state.fault;
}

/// The function of that name which this program replaces.
template <class Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void Die() { kill(getpid(), SIGKILL); }

/// For what is done or not: true when it is not, since it fails.
bool Fails(char what) {
  const FileFault fault = At(what);
  if (fault == FileFault::kKills) Die();
  return fault == FileFault::kFails;
}

}  // namespace

void zdm::test::ArmFiles(FileFault fault, int left, int error) {
  state.isArmed = true;
  state.fault = fault;
  state.left = left;
  state.error = error;
  state.length = 0;
  state.failed = nullptr;
}

std::string zdm::test::DisarmFiles() {
  state.isArmed = false;
  state.failed = nullptr;
  return {state.trace, state.length};
}

// A shared library finds these before those of the C library.
#pragma GCC visibility push(default)
extern "C" {

std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* file) {
  static auto* const next = Next<decltype(fwrite)>("fwrite");
  const FileFault fault = At('w');
  if (fault == FileFault::kNone) return next(data, size, count, file);
  state.failed = file;
  if (fault == FileFault::kFails) return 0;
  const int error = errno;
  const std::size_t half = next(data, 1, size * count / 2, file) / size;
  if (fault == FileFault::kKills) {
    fflush(file);
    Die();
  }
  errno = error;
  return half;
}

int ferror(std::FILE* file) noexcept {
  static auto* const next = Next<int(std::FILE*)>("ferror");
  return file == state.failed ? 1 : next(file);
}

int fflush(std::FILE* file) {
  static auto* const next = Next<decltype(fflush)>("fflush");
  return Fails('f') ? EOF : next(file);
}

int fsync(int file) {
  static auto* const next = Next<decltype(fsync)>("fsync");
  return Fails('s') ? -1 : next(file);
}

int fclose(std::FILE* file) {
  static auto* const next = Next<decltype(fclose)>("fclose");
  const bool fails = Fails('c');
  const int error = errno;
  const int result = next(file);
  if (fails) errno = error;
  return fails ? EOF : result;
}

int rename(const char* from, const char* to) noexcept {
  static auto* const next = Next<int(const char*, const char*)>("rename");
  return Fails('r') ? -1 : next(from, to);
}

ssize_t pread(int file, void* data, std::size_t size, off_t place) {
  static auto* const next = Next<decltype(pread)>("pread");
  const FileFault fault = At('i');
  if (fault == FileFault::kFails) return -1;
  return next(file, data, fault == FileFault::kShort && size > 1 ? size / 2 : size, place);
}

ssize_t read(int file, void* data, std::size_t size) {
  static auto* const next = Next<decltype(read)>("read");
  const FileFault fault = At('i');
  if (fault == FileFault::kFails) return -1;
  return next(file, data, fault == FileFault::kShort && size > 1 ? size / 2 : size);
}

}  // extern "C"
#pragma GCC visibility pop
