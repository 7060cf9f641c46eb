// One-dimensional arrays that know their element type, bounds and lock count. They hold VT_BSTR,
// which the array owns, and the plain numbers of VT_I2 to VT_DATE, VT_ERROR, VT_BOOL and VT_I1 to
// VT_UINT. A lock count above 0 keeps the array from being destroyed, nothing else. Where nothing
// is said: E_INVALIDARG for a null argument.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Types.h"
#include "platform/ole/portable/VarTypes.h"

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

// The element type stands in the four bytes before it.
struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;  // FADF_...
  ULONG cbElements;  // size of one element in bytes
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];
};

constexpr USHORT FADF_HAVEVARTYPE = 0x80;
constexpr USHORT FADF_BSTR = 0x100;
constexpr USHORT FADF_CREATEVECTOR = 0x2000;  // descriptor and elements in one block

/// A new array of `count` zero elements (null strings) whose first index is `lowerBound`; the
/// caller destroys it. Null for another element type and when memory runs out.
ZDM_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count);
/// Frees the array and its strings; null does nothing. DISP_E_ARRAYISLOCKED while it is locked.
ZDM_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
/// A copy with strings of its own, not locked; null `array` gives null.
ZDM_API HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** out);

/// 1, or 0 for null.
ZDM_API UINT SafeArrayGetDim(SAFEARRAY* array);
/// In bytes; 0 for null.
ZDM_API UINT SafeArrayGetElemsize(SAFEARRAY* array);
ZDM_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
/// First index; `dimension` counts from 1, DISP_E_BADINDEX for others.
ZDM_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// Last index, the first less 1 for an array without elements; as SafeArrayGetLBound.
ZDM_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);

/// Locks the array and hands out its elements (borrowed until SafeArrayUnaccessData).
ZDM_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
/// E_UNEXPECTED when the array is not locked.
ZDM_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

/// Copies the element at `*index` to `out`; a string is a new one for the caller, null if it is
/// null. DISP_E_BADINDEX outside the bounds.
ZDM_API HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* out);
/// Copies `value` into the place at `*index`. A string is passed itself, not by its address, and
/// copied; null becomes empty. DISP_E_BADINDEX outside the bounds.
ZDM_API HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* value);
