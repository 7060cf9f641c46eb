// The system's value and storage types under their usual names: BSTR, VARIANT, SAFEARRAY, GUID,
// IStream, IStorage. On Windows they are the system's own; elsewhere portable/ supplies the same
// names with the same behaviour, as far as the library uses them.
// This is the only header that includes <windows.h>; macros that collide with our operation names
// are removed here.
#pragma once

#include "platform/Export.h"

#if defined(_WIN32)
#include <windows.h>
// After <windows.h>, which must come first.
#include <objbase.h>
#include <ole2.h>
#include <oleauto.h>
#include <shlwapi.h>

#undef GetObject
#undef GetClassName
#undef GetCurrentTime
#undef GetMessage
#undef SendMessage
#undef GetProp
#undef SetProp
#undef RemoveProp
#undef CreateFile
#undef CopyFile
#undef MoveFile
#undef DeleteFile
#undef DrawText
#undef FindText
#undef UpdateResource
#undef RegisterClass
#undef Yield
#else
#include "platform/ole/portable/Bstr.h"
#include "platform/ole/portable/Guid.h"
#include "platform/ole/portable/SafeArray.h"
#include "platform/ole/portable/Storage.h"
#include "platform/ole/portable/Stream.h"
#include "platform/ole/portable/TaskMemory.h"
#include "platform/ole/portable/Types.h"
#include "platform/ole/portable/Variant.h"
#endif
