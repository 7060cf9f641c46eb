// VARIANT and the operations on it, as OLE Automation has them.
// The layout is the system's on 64-bit machines: type at 0, value at 8, 24 bytes in all, and a
// DECIMAL that lies over the whole record so that its first two bytes are the type.
// Texts are those of the invariant locale whatever locale is asked for. Left out: records, default
// values of dispatch objects, conversion between byte arrays and text.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Bstr.h"
#include "platform/ole/portable/SafeArray.h"
#include "platform/ole/portable/Stream.h"
#include "platform/ole/portable/Types.h"
#include "platform/ole/portable/VarTypes.h"

using VARIANT_BOOL = SHORT;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

using DATE = double;  // days since 30 December 1899; the fraction counts forward on either side

/// Currency: ten-thousandths in 64 bits.
union CY {
  __extension__ struct {
    ULONG Lo;
    LONG Hi;
  };
  LONGLONG int64;
};

/// An integer of 96 bits, a sign and a power of ten to divide by.
struct DECIMAL {
  USHORT wReserved;
  __extension__ union {
    __extension__ struct {
      BYTE scale;  // 0 to 28
      BYTE sign;   // 0 or DECIMAL_NEG
    };
    USHORT signscale;
  };
  ULONG Hi32;
  __extension__ union {
    __extension__ struct {
      ULONG Lo32;
      ULONG Mid32;
    };
    ULONGLONG Lo64;
  };
};
constexpr BYTE DECIMAL_NEG = 0x80;

using DISPID = LONG;
struct ITypeInfo;
struct DISPPARAMS;
struct EXCEPINFO;
struct tagVARIANT;

/// A scriptable object. Values hold, copy and release one; nothing here calls its operations.
struct ZDM_INTERFACE IDispatch : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count,
                                                  LCID locale, DISPID* ids) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                           DISPPARAMS* parameters, tagVARIANT* result,
                                           EXCEPINFO* exception, UINT* argument) = 0;
};
inline constexpr IID IID_IDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

struct tagVARIANT {
  __extension__ union {
    __extension__ struct {
      VARTYPE vt;
      WORD wReserved1;
      WORD wReserved2;
      WORD wReserved3;
      __extension__ union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        FLOAT fltVal;
        DOUBLE dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        BYTE* pbVal;
        SHORT* piVal;
        LONG* plVal;
        LONGLONG* pllVal;
        FLOAT* pfltVal;
        DOUBLE* pdblVal;
        VARIANT_BOOL* pboolVal;
        SCODE* pscode;
        CY* pcyVal;
        DATE* pdate;
        BSTR* pbstrVal;
        IUnknown** ppunkVal;
        IDispatch** ppdispVal;
        SAFEARRAY** pparray;
        tagVARIANT* pvarVal;
        void* byref;
        CHAR cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;
        DECIMAL* pdecVal;
        CHAR* pcVal;
        USHORT* puiVal;
        ULONG* pulVal;
        ULONGLONG* pullVal;
        INT* pintVal;
        UINT* puintVal;
        __extension__ struct {
          void* pvRecord;
          void* pRecInfo;
        };
      };
    };
    DECIMAL decVal;
  };
};
using VARIANT = tagVARIANT;
using VARIANTARG = VARIANT;

static_assert(sizeof(DECIMAL) == 16 && sizeof(VARIANT) == 24);

constexpr HRESULT VARCMP_NULL = 3;  // the other outcomes: with VarBstrCmp

constexpr LCID LOCALE_INVARIANT = 0x7F;
constexpr USHORT VARIANT_NOVALUEPROP = 0x01;
constexpr USHORT VARIANT_ALPHABOOL = 0x02;

/// Makes raw memory an empty value.
ZDM_API void VariantInit(VARIANTARG* value);

/// Frees what the value owns (text, one reference, array) and makes it empty; what it refers to by
/// reference is left alone.
/// DISP_E_BADVARTYPE for a type no value has, DISP_E_ARRAYISLOCKED; the value is then unchanged.
ZDM_API HRESULT VariantClear(VARIANTARG* value);

/// Clears `target`, then copies: text and arrays are duplicated, objects gain a reference, a
/// reference stays one. Onto itself it does nothing. A null text stays null.
/// On failure of the copy `target` is empty; on a bad type it is unchanged.
ZDM_API HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source);

/// As VariantCopy, but a value given by reference is followed and copied itself.
ZDM_API HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source);

/// Converts; `target` may be `source`. Reals become integers by rounding to even, same-width
/// integers keep their bits, text is read and written as the invariant locale does.
/// DISP_E_TYPEMISMATCH without a conversion, DISP_E_OVERFLOW out of range, DISP_E_BADVARTYPE for a
/// type no value has, E_INVALIDARG for a damaged DECIMAL; `target` is then unchanged.
/// @param flags  VARIANT_ALPHABOOL: booleans become "True" and "False" instead of "-1" and "0".
ZDM_API HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source, LCID locale,
                                    USHORT flags, VARTYPE type);
ZDM_API HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags,
                                  VARTYPE type);

/// VARCMP_LT, _EQ, _GT; VARCMP_NULL when either side is VT_NULL. Any text is above any number.
/// DISP_E_TYPEMISMATCH for VT_I1, VT_UI2, VT_UI4, VT_UI8 on the left, objects, and an error against
/// another type; DISP_E_BADVARTYPE for VT_INT and VT_UI8 on the right, VT_UINT, arrays, references;
/// E_INVALIDARG for a DECIMAL with a scale above 28 or stray bits beside its sign.
ZDM_API HRESULT VarCmp(VARIANT* left, VARIANT* right, LCID locale, ULONG flags);
