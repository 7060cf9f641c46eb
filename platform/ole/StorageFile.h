// The doors through which the library opens and makes compound files, alike on both systems: the
// bytes are checked before anything else reads them.
#pragma once

#include "platform/ole/CompoundFileCheck.h"
#include "platform/ole/ole.h"

namespace zdm {

/// Opens the compound file at `path`; one reference for the caller.
/// @param mode    STGM_… as StgOpenStorage takes it.
/// @param report  what was found wrong, or null.
/// STG_E_FILENOTFOUND, STG_E_PATHNOTFOUND, STG_E_ACCESSDENIED; STG_E_FILEALREADYEXISTS for what is
/// no compound file; STG_E_DOCFILECORRUPT for one that fails CheckCompoundFile; STG_E_READFAULT.
/// When a storage opened for writing without STGM_TRANSACTED was changed, its last release writes
/// the file too, on both systems; only Commit tells whether that went well.
ZDM_API HRESULT OpenStorage(LPCOLESTR path, DWORD mode, IStorage** out,
                            CompoundFileReport* report = nullptr);

/// Makes a compound file at `path`; one reference for the caller. It is complete once the storage
/// was committed. On Windows the system writes in place: an existing file is gone at once, and one
/// that is half written can be seen. Elsewhere the old file stays until the new one replaces it.
/// STG_E_FILEALREADYEXISTS without STGM_CREATE in `mode` when there is a file.
ZDM_API HRESULT CreateStorage(LPCOLESTR path, DWORD mode, IStorage** out);

}  // namespace zdm
