// Loads the library without linking it, calls it and unloads it, twice, as an application's module
// loader does.
#include <cstdio>

#if defined(_WIN32)
#include "platform/ole/ole.h"
#else
#include <dlfcn.h>
#endif

namespace {

using Call = const void* (*)();

#if defined(_WIN32)
bool LoadCallAndUnload(const char* name, const char* function) {
  HMODULE module = LoadLibraryA(name);
  if (module == nullptr) return false;
  const auto call =
      reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, function)));
  const bool called = call != nullptr && call() != nullptr;
  return FreeLibrary(module) != 0 && called && GetModuleHandleA(name) == nullptr;
}
#else
bool LoadCallAndUnload(const char* name, const char* function) {
  void* module = dlopen(name, RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    return false;
  }
  const auto call = reinterpret_cast<Call>(dlsym(module, function));
  const bool called = call != nullptr && call() != nullptr;
  return dlclose(module) == 0 && called && dlopen(name, RTLD_NOW | RTLD_NOLOAD) == nullptr;
}
#endif

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  for (int round = 0; round < 2; ++round) {
    // ZCore::GetZFactory(), as the compilers name it.
    if (!LoadCallAndUnload(argv[1], "_ZN5ZCore11GetZFactoryEv")) return 1;
  }
  std::puts("loaded, called and unloaded twice");
  return 0;
}
