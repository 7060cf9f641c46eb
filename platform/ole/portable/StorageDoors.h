// Opening with a report of what was wrong; StgOpenStorage is this without one.
#pragma once

#include "platform/ole/CompoundFileCheck.h"
#include "platform/ole/portable/Storage.h"

namespace zdm {

HRESULT OpenPortableStorage(LPCOLESTR path, DWORD mode, IStorage** out, CompoundFileReport* report);

}  // namespace zdm
