// GUID, its comparisons, its text form and the registry of program names.
#pragma once

#include <cstring>

#include "platform/Export.h"
#include "platform/ole/portable/Types.h"

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};
using CLSID = GUID;
using IID = GUID;
using REFGUID = const GUID&;
using REFCLSID = const GUID&;
using REFIID = const GUID&;

inline bool operator==(const GUID& left, const GUID& right) {
  return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

inline bool IsEqualGUID(const GUID& left, const GUID& right) { return left == right; }

inline constexpr GUID GUID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
inline constexpr CLSID CLSID_NULL = GUID_NULL;
inline constexpr IID IID_NULL = GUID_NULL;

/// Writes "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" and its terminator (39 units, upper-case hex).
/// @return 39, or 0 when `capacity` (in units) is too small; `text` is then unchanged.
ZDM_API int StringFromGUID2(REFGUID guid, OLECHAR* text, int capacity);
