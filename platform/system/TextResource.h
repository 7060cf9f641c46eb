// The texts that the library itself carries, by number.
#pragma once

#include "platform/system/Text.h"

#include <optional>

namespace zdm {

/// On Windows the string resource of that number in the library that this code is part of;
/// elsewhere there are none. No value when there is no such text.
ZDM_API std::optional<WideString> LoadTextResource(USHORT number);

}  // namespace zdm
