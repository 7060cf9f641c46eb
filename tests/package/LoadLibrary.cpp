// Loads and unloads the library without linking it, twice, as an application's module loader does.
#include <cstdio>

#if defined(_WIN32)
#include "platform/ole/ole.h"
#else
#include <dlfcn.h>
#endif

namespace {

#if defined(_WIN32)
bool LoadAndUnload(const char* name) {
  HMODULE module = LoadLibraryA(name);
  return module != nullptr && FreeLibrary(module) != 0;
}
#else
bool LoadAndUnload(const char* name) {
  void* module = dlopen(name, RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) std::fprintf(stderr, "%s\n", dlerror());
  return module != nullptr && dlclose(module) == 0;
}
#endif

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  for (int round = 0; round < 2; ++round) {
    if (!LoadAndUnload(argv[1])) return 1;
  }
  std::puts("loaded and unloaded twice");
  return 0;
}
