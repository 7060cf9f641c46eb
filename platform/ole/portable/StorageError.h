// The results that stand for an error of the operating system, and paths in its encoding.
#pragma once

#include <string>

#include "platform/ole/portable/Stream.h"

namespace zdm {

/// The STG_E_… result for `error` (an errno). For a missing file STG_E_PATHNOTFOUND when already
/// its folder is missing.
HRESULT StorageError(int error, const std::string& path);

/// The folder part of `path`, "." if it has none.
std::string FolderOf(const std::string& path);

/// UTF-8 of a path.
std::string NativePath(LPCOLESTR path);

}  // namespace zdm
