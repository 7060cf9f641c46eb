// The record in which extended-data items exchange a value whose type is known at run time.
// The type numbers are those of VARIANT; VT_I2, VT_I4, VT_R4 and VT_UI4 are used. It owns nothing.
#pragma once

#include "platform/ole/ole.h"

#include <cstddef>
#include <type_traits>

// Record, 16 bytes.
//   offset  size  field
//        0     2  type
//        2     6  not used
//        8     8  value
struct tagZVARIANT {
  VARTYPE vt;
  union Value {
    LONGLONG llVal;
    SHORT iVal;    // VT_I2
    LONG lVal;     // VT_I4
    FLOAT fltVal;  // VT_R4
    ULONG ulVal;   // VT_UI4
  };
  alignas(8) Value value;
};

static_assert(offsetof(tagZVARIANT, vt) == 0 && sizeof(VARTYPE) == 2);
static_assert(offsetof(tagZVARIANT, value) == 8 && sizeof(tagZVARIANT) == 16);
static_assert(std::is_trivial_v<tagZVARIANT> && std::is_standard_layout_v<tagZVARIANT>);
