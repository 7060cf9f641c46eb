// The GUID that stands for no definition and no type: nothing is ever found under it.
#pragma once

#include "zdm/framework/ZClass.h"

inline constexpr GUID GUID_UNSET = zdm::ParseGuid("74B4599E-6A4C-4A8C-A8F1-7FD4DE9865F1");
