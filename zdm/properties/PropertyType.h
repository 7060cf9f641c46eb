// The type codes that the library itself gives to properties. The full list is the host's.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

constexpr ULONG kPropertyString = 1;
constexpr ULONG kPropertyLong = 2;
constexpr ULONG kPropertyDouble = 3;
constexpr ULONG kPropertyYesNo = 10;
constexpr ULONG kPropertyPoint = 18;
constexpr ULONG kPropertyArray = 23;
constexpr ULONG kPropertyIndex = 25;

}  // namespace zdm
