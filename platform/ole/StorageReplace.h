// Writes a compound file so that at every moment the old one or the new one is at its path, whole,
// alike on both systems.
#pragma once

#include "platform/ole/ole.h"

#include <functional>

namespace zdm {

/// Makes a compound file, has `fill` write it, flushes it to the disk and puts it in place of the
/// file at `path` (or of none). Whatever fails, or throws, before that leaves the old file alone
/// and no half file behind. Returns the first failure, also that of `fill`; STG_E_… else.
ZDM_API HRESULT ReplaceStorage(LPCOLESTR path, const std::function<HRESULT(IStorage*)>& fill);

}  // namespace zdm
