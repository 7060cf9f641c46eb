// Which type codes a VARIANT may have, and how long their values are.
#pragma once

#include "platform/ole/portable/VarTypes.h"

#include <cstddef>

namespace zdm {

/// Bytes of a value of `type` (no flags); 0 for types that no value has or that hold nothing.
constexpr std::size_t VariantValueSize(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return 8;
    case VT_DECIMAL:
      return 16;
    case VT_VARIANT:
      return 24;
    default:
      return 0;
  }
}

/// Whether a value can have this type code, flags included.
constexpr bool IsVariantType(VARTYPE type) {
  if ((type & (VT_VECTOR | VT_RESERVED)) != 0) return false;
  const VARTYPE base = type & VT_TYPEMASK;
  if ((type & (VT_ARRAY | VT_BYREF)) != 0) return VariantValueSize(base) != 0;
  return base <= VT_NULL || VariantValueSize(base) != 0;
}

}  // namespace zdm
