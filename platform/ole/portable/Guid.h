// GUID, its comparisons, its text form and the registry of program names.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Types.h"

#include <cstring>

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

/// Writes "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" and its terminator (39 units, upper-case hex).
/// @return 39, or 0 when `capacity` (in units) is too small; `text` is then unchanged.
ZDM_API int StringFromGUID2(REFGUID guid, OLECHAR* text, int capacity);

/// Reads the text form; hex digits of either case, null text gives CLSID_NULL.
/// E_INVALIDARG for a null `out`; CO_E_CLASSSTRING for any other text, `*out` is then CLSID_NULL.
ZDM_API HRESULT CLSIDFromString(LPCOLESTR text, CLSID* out);

/// The program name registered for `id`, in memory of the task allocator that the caller frees.
/// E_INVALIDARG for a null `out`; REGDB_E_CLASSNOTREG (and null) when none is; E_OUTOFMEMORY.
ZDM_API HRESULT ProgIDFromCLSID(REFCLSID id, LPOLESTR* out);

namespace zdm {

/// Registers `name` as the program name of `id` in this process, in place of a former one; null
/// takes it out. Nothing is registered at first. For hosts and tests; from any thread.
ZDM_API void RegisterProgID(const CLSID& id, const OLECHAR* name);

}  // namespace zdm
