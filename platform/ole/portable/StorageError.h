// The results that stand for an error of the operating system, and paths in its encoding.
#pragma once

#include "platform/ole/portable/Stream.h"

#include <string>

namespace zdm {

/// The STG_E_… result for `error` (an errno). For a missing file STG_E_PATHNOTFOUND when already
/// its folder is missing.
HRESULT StorageError(int error, const std::string& path);

/// The folder part of `path`, "." if it has none.
std::string FolderOf(const std::string& path);

/// UTF-8 of a path. False for one with half a surrogate pair, which has none.
bool NativePath(LPCOLESTR path, std::string* out);

/// Whether the process in its present rights may do to `path` what `rights` (R_OK, W_OK, X_OK) say.
bool MayAccess(const std::string& path, int rights);

}  // namespace zdm
