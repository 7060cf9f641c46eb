// The two functions with which an application registers the library as one of its modules.
#pragma once

#include "platform/ole/ole.h"

extern "C" {

/// Fills the registry of field values (ZDfValueRxClass); to be called before anything is loaded.
/// What is registered already stays. Returns S_OK.
ZDM_API HRESULT DllRegisterZModule();
/// Empties what the library keeps for the whole process; to be called after the last document.
/// Returns S_OK.
ZDM_API HRESULT DllUnRegisterZModule();

}  // extern "C"
