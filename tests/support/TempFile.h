// Files for tests: a folder that goes away with the program, bytes in and out.
#pragma once

#include "platform/ole/ole.h"

#include <filesystem>
#include <vector>

namespace zdm::test {

/// A path in a folder that is new for this run of the program, and no file there.
std::filesystem::path TempFile(const char* name);

std::vector<BYTE> FileBytes(const std::filesystem::path& path);
void WriteFileBytes(const std::filesystem::path& path, const std::vector<BYTE>& bytes);

}  // namespace zdm::test
