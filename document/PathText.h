// File names between the standard library and the system's storage functions.
#pragma once

#include "platform/system/Text.h"

#include <filesystem>

namespace zdm {

inline WideString WideName(const std::filesystem::path& path) {
#if defined(_WIN32)
  return path.native();
#else
  return path.u16string();
#endif
}

}  // namespace zdm
