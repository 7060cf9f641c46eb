// Short words for values and their conversions.
#pragma once

#include "platform/ole/Variant.h"
#include "platform/ole/ole.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace zdm::test {

/// Whether the Windows below is Wine, whose known slips some rows name.
inline bool UnderWine() {
#if defined(_WIN32)
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
  return false;
#endif
}

/// A value of `type` whose bytes are those of `bits`.
template <typename T>
Variant Make(int type, T bits) {
  static_assert(sizeof bits <= 8);
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(type);
  std::memcpy(&value.llVal, &bits, sizeof bits);
  Variant made;
  made.Attach(value);
  return made;
}
inline Variant Empty(int type = VT_EMPTY) { return Make(type, LONGLONG{0}); }
inline Variant I1(int v) { return Make(VT_I1, static_cast<signed char>(v)); }
inline Variant UI1(int v) { return Make(VT_UI1, static_cast<BYTE>(v)); }
inline Variant I2(int v) { return Make(VT_I2, static_cast<SHORT>(v)); }
inline Variant UI2(int v) { return Make(VT_UI2, static_cast<USHORT>(v)); }
inline Variant I4(LONGLONG v) { return Make(VT_I4, static_cast<LONG>(v)); }
inline Variant UI4(LONGLONG v) { return Make(VT_UI4, static_cast<ULONG>(v)); }
inline Variant I8(LONGLONG v) { return Make(VT_I8, v); }
inline Variant UI8(ULONGLONG v) { return Make(VT_UI8, v); }
inline Variant R4(FLOAT v) { return Make(VT_R4, v); }
inline Variant R8(double v) { return Make(VT_R8, v); }
inline Variant Date(double v) { return Make(VT_DATE, v); }
inline Variant Cy(LONGLONG tenThousandths) { return Make(VT_CY, tenThousandths); }
inline Variant Bool(int v) { return Make(VT_BOOL, static_cast<SHORT>(v)); }
inline Variant Text(const char* text) {
  std::basic_string<OLECHAR> wide;
  for (; *text != 0; ++text) wide += static_cast<OLECHAR>(static_cast<unsigned char>(*text));
  return Variant::FromText(wide.c_str());
}
inline Variant Dec(bool negative, ULONG high, ULONGLONG low, int scale) {
  VARIANT value;
  VariantInit(&value);
  value.decVal.sign = negative ? DECIMAL_NEG : BYTE{0};
  value.decVal.scale = static_cast<BYTE>(scale);
  value.decVal.Hi32 = high;
  value.decVal.Lo64 = low;
  value.vt = VT_DECIMAL;
  return Variant(value);
}

/// The value inside, for operations of the system that take no const pointer.
inline VARIANT* Inside(const Variant& value) { return const_cast<VARIANT*>(&value.Get()); }

/// The integer of 96 bits in decimal digits.
inline std::string Digits(const DECIMAL& number) {
  ULONG words[3] = {number.Hi32, number.Mid32, number.Lo32};
  std::string digits;
  do {
    ULONGLONG rest = 0;
    for (ULONG& word : words) {
      rest = rest << 32 | word;
      word = static_cast<ULONG>(rest / 10);
      rest %= 10;
    }
    digits.insert(digits.begin(), static_cast<char>('0' + rest));
  } while ((words[0] | words[1] | words[2]) != 0);
  return digits;
}

inline std::string Printed(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

/// The value alone: numbers with every digit, text in quotes, "null" for a null text.
inline std::string Describe(const VARIANT& value) {
  switch (value.vt) {
    case VT_I1:
      return std::to_string(static_cast<signed char>(value.cVal));
    case VT_UI1:
      return std::to_string(value.bVal);
    case VT_I2:
    case VT_BOOL:
      return std::to_string(value.iVal);
    case VT_UI2:
      return std::to_string(value.uiVal);
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
      return std::to_string(value.lVal);
    case VT_UI4:
    case VT_UINT:
      return std::to_string(value.ulVal);
    case VT_I8:
    case VT_CY:
      return std::to_string(value.llVal);
    case VT_UI8:
      return std::to_string(value.ullVal);
    case VT_R4:
      return Printed("%.9g", static_cast<double>(value.fltVal));
    case VT_R8:
      return Printed("%.17g", value.dblVal);
    case VT_DATE:  // to a tenth of a second
      return Printed("%.6f", value.date);
    case VT_BSTR: {
      if (value.bstrVal == nullptr) return "null";
      std::string text;
      for (UINT i = 0; i < SysStringLen(value.bstrVal); ++i) {
        text += static_cast<char>(value.bstrVal[i]);
      }
      return '"' + text + '"';
    }
    case VT_DECIMAL:
      return (value.decVal.sign != 0 ? "-" : "") + Digits(value.decVal) + "e-" +
             std::to_string(value.decVal.scale);
    default:
      return value.vt == VT_EMPTY ? "empty" : "type " + std::to_string(value.vt);
  }
}

/// The outcome of converting through the invariant locale: as Describe, or the name of the result.
inline std::string Converted(const Variant& source, int type, USHORT flags = 0) {
  Variant target;
  const HRESULT result =
      ConvertVariant(target.Out(), source.Get(), static_cast<VARTYPE>(type), flags);
  if (result == DISP_E_OVERFLOW) return "overflow";
  if (result == DISP_E_TYPEMISMATCH) return "mismatch";
  if (result == DISP_E_BADVARTYPE) return "bad type";
  if (FAILED(result)) return "failed";
  if (target.type() != type) return "wrong type " + std::to_string(target.type());
  return Describe(target.Get());
}

}  // namespace zdm::test
