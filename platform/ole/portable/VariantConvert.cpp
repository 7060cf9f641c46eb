// VariantChangeTypeEx: every source becomes an exact decimal number, a real or a text, and each
// target says what it takes of these.
#include "platform/ole/portable/Variant.h"
#include "platform/ole/portable/VariantDate.h"
#include "platform/ole/portable/VariantDecimal.h"
#include "platform/ole/portable/VariantNumberText.h"
#include "platform/ole/portable/VariantTypes.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

using zdm::Decimal;
using zdm::DigitText;
using zdm::Uint128;

/// A number on its way from one type to another.
struct Number {
  enum Kind { kExact, kReal, kText } kind = kExact;
  Decimal exact;                        // kExact
  double real = 0;                      // kReal
  DigitText text;                       // kText
  int realDigits = zdm::kDoubleDigits;  // kReal: what counts when it becomes a DECIMAL
  // For integers: the bits, which an integer of the same width takes over as they are.
  std::optional<ULONGLONG> bits;
  int width = 0;  // of `bits` in bytes, or one of the two below
};
constexpr int kAnyWidth = 0;       // as many bits as the other has
constexpr int kFittingWidth = -1;  // if no set bit is lost

Number Exact(const Decimal& value) {
  Number number;
  number.exact = value;
  return number;
}
Number Real(double value, int digits = zdm::kDoubleDigits) {
  Number number;
  number.kind = Number::kReal;
  number.real = value;
  number.realDigits = digits;
  return number;
}
Number Signed(LONGLONG value, int width) {
  Number number = Exact(Decimal::FromInteger(value));
  number.bits = static_cast<ULONGLONG>(value);
  number.width = width;
  return number;
}
Number Unsigned(ULONGLONG value, int width) {
  Number number = Exact({false, value, 0});
  number.bits = value;
  number.width = width;
  return number;
}

std::u16string_view TextOf(BSTR text) {
  if (text == nullptr) return {};
  return {text, SysStringLen(text)};
}

/// DISP_E_TYPEMISMATCH for what is no number.
HRESULT ReadNumber(const VARIANT& value, Number* number) {
  switch (value.vt) {
    case VT_EMPTY:
      *number = Exact({});
      return S_OK;
    case VT_I1:
      *number = Signed(static_cast<signed char>(value.cVal), 1);
      return S_OK;
    case VT_BOOL:
      *number = Signed(value.boolVal, kAnyWidth);
      return S_OK;
    case VT_I2:
      *number = Signed(value.iVal, 2);
      return S_OK;
    case VT_I4:
    case VT_INT:
      *number = Signed(value.lVal, 4);
      return S_OK;
    case VT_I8:
      *number = Signed(value.llVal, 8);
      return S_OK;
    case VT_UI1:
      *number = Unsigned(value.bVal, 1);
      return S_OK;
    case VT_UI2:
      *number = Unsigned(value.uiVal, 2);
      return S_OK;
    case VT_UI4:
    case VT_UINT:
      *number = Unsigned(value.ulVal, 4);
      return S_OK;
    case VT_UI8:
      *number = Unsigned(value.ullVal, 8);
      return S_OK;
    case VT_R4:
      *number = Real(static_cast<double>(value.fltVal), zdm::kFloatDigits);
      return S_OK;
    case VT_R8:
    case VT_DATE:
      *number = Real(value.dblVal);
      return S_OK;
    case VT_CY:
      *number = Exact(Decimal::FromCurrency(value.cyVal.int64));
      return S_OK;
    case VT_DECIMAL:
      if (!zdm::IsValid(value.decVal)) return E_INVALIDARG;
      *number = Exact(Decimal::FromDECIMAL(value.decVal));
      return S_OK;
    case VT_BSTR: {
      const auto parsed = zdm::ParseNumber(TextOf(value.bstrVal));
      if (!parsed) return DISP_E_TYPEMISMATCH;
      if (parsed->bits) {
        *number = Unsigned(*parsed->bits, kFittingWidth);
      } else {
        number->kind = Number::kText;
        number->text = parsed->decimal;
      }
      return S_OK;
    }
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

double ToReal(const Number& number) {
  switch (number.kind) {
    case Number::kReal:
      return number.real;
    case Number::kText:
      return ToDouble(number.text);
    default:
      return ToDouble(number.exact);
  }
}

/// A number times a power of ten, rounded to even.
struct Scaled {
  bool negative;
  Uint128 magnitude;
};
std::optional<Scaled> Scale(const Number& number, int scale) {
  if (number.kind == Number::kReal) {
    // The product and its rounding error together are exact.
    const double factor = std::pow(10.0, scale);
    const double product = number.real * factor;
    if (!(std::fabs(product) < 1.9e19)) return std::nullopt;
    const double error = std::fma(number.real, factor, -product);
    double rounded = std::nearbyint(product);
    if (std::fabs(product - std::trunc(product)) == 0.5 && error != 0) {
      rounded = error > 0 ? std::ceil(product) : std::floor(product);
    }
    const bool negative = rounded < 0;
    Uint128 magnitude = static_cast<Uint128>(std::fabs(rounded));
    if (rounded == product) {
      const double rest = std::nearbyint(negative ? -error : error);
      magnitude += static_cast<Uint128>(static_cast<LONGLONG>(rest));
    }
    return Scaled{negative, magnitude};
  }
  const bool text = number.kind == Number::kText;
  const auto magnitude =
      text ? ScaledMagnitude(number.text, scale) : ScaledMagnitude(number.exact, scale);
  if (!magnitude) return std::nullopt;
  return Scaled{text ? number.text.negative : number.exact.negative, *magnitude};
}

template <typename T>
HRESULT ToInteger(const Number& number, T* out) {
  if (number.bits) {
    const bool fits = *number.bits >> (8 * sizeof(T) - 1) >> 1 == 0;
    if (number.width == kAnyWidth || number.width == static_cast<int>(sizeof(T)) ||
        (number.width == kFittingWidth && fits)) {
      *out = static_cast<T>(*number.bits);
      return S_OK;
    }
  }
  const std::optional<Scaled> scaled = Scale(number, 0);
  if (!scaled) return DISP_E_OVERFLOW;
  constexpr Uint128 kMax = static_cast<Uint128>(std::numeric_limits<T>::max());
  constexpr Uint128 kBelow = std::numeric_limits<T>::is_signed ? kMax + 1 : 0;
  if (scaled->magnitude > (scaled->negative ? kBelow : kMax)) return DISP_E_OVERFLOW;
  const auto magnitude = static_cast<ULONGLONG>(scaled->magnitude);
  *out = static_cast<T>(scaled->negative ? 0 - magnitude : magnitude);
  return S_OK;
}

HRESULT ToFloat(const Number& number, FLOAT* out) {
  const double value = ToReal(number);
  if (std::fabs(value) > static_cast<double>(std::numeric_limits<FLOAT>::max())) {
    return DISP_E_OVERFLOW;
  }
  *out = static_cast<FLOAT>(value);
  return S_OK;
}

HRESULT ToDoubleChecked(const Number& number, double* out) {
  *out = ToReal(number);
  return number.kind == Number::kText && std::isinf(*out) ? DISP_E_OVERFLOW : S_OK;
}

HRESULT ToCurrency(const Number& number, CY* out) {
  const std::optional<Scaled> scaled = Scale(number, zdm::kCurrencyScale);
  constexpr auto kMax = static_cast<Uint128>(std::numeric_limits<LONGLONG>::max());
  if (!scaled || scaled->magnitude > kMax + (scaled->negative ? 1 : 0)) return DISP_E_OVERFLOW;
  const auto magnitude = static_cast<ULONGLONG>(scaled->magnitude);
  out->int64 = static_cast<LONGLONG>(scaled->negative ? 0 - magnitude : magnitude);
  return S_OK;
}

HRESULT ToDecimalValue(const Number& number, VARIANT* out) {
  Decimal value = number.exact;
  if (number.kind != Number::kExact) {
    if (number.kind == Number::kReal && !std::isfinite(number.real)) return DISP_E_OVERFLOW;
    const auto read = ToDecimal(number.kind == Number::kText
                                    ? number.text
                                    : zdm::RoundedDigits(number.real, number.realDigits));
    if (!read) return DISP_E_OVERFLOW;
    value = *read;
  }
  out->decVal = ToDECIMAL(value);
  return S_OK;
}

constexpr char16_t Lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

/// "True" and "False" in any case, "#TRUE#" and "#FALSE#" exactly.
std::optional<bool> ReadBool(std::u16string_view text) {
  if (text == u"#TRUE#") return true;
  if (text == u"#FALSE#") return false;
  std::u16string lower;
  for (const char16_t unit : text.substr(0, 6)) lower += Lower(unit);
  if (lower == u"true") return true;
  if (lower == u"false") return false;
  return std::nullopt;
}

HRESULT ToBool(const VARIANT& source, VARIANT_BOOL* out) {
  std::optional<bool> value;
  if (source.vt == VT_BSTR) value = ReadBool(TextOf(source.bstrVal));
  if (!value) {
    Number number;
    HRESULT result = ReadNumber(source, &number);
    if (FAILED(result)) return result;
    double real = 0;
    result = ToDoubleChecked(number, &real);
    if (FAILED(result)) return result;
    value = real != 0;
  }
  *out = *value ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT ToDate(const VARIANT& source, DATE* out) {
  if (source.vt == VT_BSTR) {
    const std::optional<DATE> date = zdm::ParseDate(TextOf(source.bstrVal));
    if (!date) return DISP_E_TYPEMISMATCH;
    *out = *date;
    return S_OK;
  }
  Number number;
  const HRESULT result = ReadNumber(source, &number);
  if (FAILED(result)) return result;
  const double date = ToReal(number);
  if (!zdm::IsValidDate(date)) return DISP_E_OVERFLOW;
  *out = date;
  return S_OK;
}

HRESULT ToText(const VARIANT& source, USHORT flags, BSTR* out) {
  std::string text;
  switch (source.vt) {
    case VT_EMPTY:
      break;
    case VT_R4:
      text = zdm::RealText(static_cast<double>(source.fltVal), zdm::kFloatDigits);
      break;
    case VT_R8:
      text = zdm::RealText(source.dblVal, zdm::kDoubleDigits);
      break;
    case VT_DATE: {
      const std::optional<std::string> date = zdm::DateText(source.date);
      if (!date) return E_INVALIDARG;
      text = *date;
      break;
    }
    default: {
      if (source.vt == VT_BOOL && (flags & VARIANT_ALPHABOOL) != 0) {
        text = source.boolVal != VARIANT_FALSE ? "True" : "False";
        break;
      }
      Number number;
      const HRESULT result = ReadNumber(source, &number);
      if (FAILED(result)) return result;
      text = zdm::ToText(number.exact);
    }
  }
  const std::u16string wide(text.begin(), text.end());
  *out = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

/// Between VT_UNKNOWN and VT_DISPATCH, by asking the object; its answer is the result.
HRESULT ToObject(const VARIANT& source, VARTYPE type, VARIANT* out) {
  if (source.vt != VT_UNKNOWN && source.vt != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
  if (source.punkVal == nullptr) return S_OK;
  void* object = nullptr;
  const IID& iid = type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown;
  const HRESULT result = source.punkVal->QueryInterface(iid, &object);
  if (FAILED(result)) return result;
  if (type == VT_DISPATCH) {
    out->pdispVal = static_cast<IDispatch*>(object);
  } else {
    out->punkVal = static_cast<IUnknown*>(object);
  }
  return S_OK;
}

HRESULT ToNumeric(const VARIANT& source, VARTYPE type, VARIANT* out) {
  Number number;
  const HRESULT result = ReadNumber(source, &number);
  if (FAILED(result)) return result;
  switch (type) {
    case VT_I1: {
      signed char value = 0;
      const HRESULT converted = ToInteger(number, &value);
      out->cVal = static_cast<CHAR>(value);
      return converted;
    }
    case VT_UI1:
      return ToInteger(number, &out->bVal);
    case VT_I2:
      return ToInteger(number, &out->iVal);
    case VT_UI2:
      return ToInteger(number, &out->uiVal);
    case VT_I4:
    case VT_INT:
      return ToInteger(number, &out->lVal);
    case VT_UI4:
    case VT_UINT:
      return ToInteger(number, &out->ulVal);
    case VT_I8:
      return ToInteger(number, &out->llVal);
    case VT_UI8:
      return ToInteger(number, &out->ullVal);
    case VT_R4:
      return ToFloat(number, &out->fltVal);
    case VT_R8:
      return ToDoubleChecked(number, &out->dblVal);
    case VT_CY:
      return ToCurrency(number, &out->cyVal);
    case VT_DECIMAL:
      return ToDecimalValue(number, out);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

/// `source` has no flags and a type other than `type`; `out` is empty.
HRESULT Convert(const VARIANT& source, USHORT flags, VARTYPE type, VARIANT* out) {
  if (source.vt == VT_NULL || source.vt == VT_ERROR) return DISP_E_TYPEMISMATCH;
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
      return S_OK;
    case VT_BSTR:
      return ToText(source, flags, &out->bstrVal);
    case VT_BOOL:
      return ToBool(source, &out->boolVal);
    case VT_DATE:
      return ToDate(source, &out->date);
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return ToObject(source, type, out);
    default:
      return ToNumeric(source, type, out);
  }
}

}  // namespace

HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source, LCID, USHORT flags,
                            VARTYPE type) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (!zdm::IsVariantType(source->vt) || !zdm::IsVariantType(type)) return DISP_E_BADVARTYPE;
  VARIANT plain;
  VariantInit(&plain);
  HRESULT result = VariantCopyInd(&plain, source);
  if (FAILED(result)) return result;

  VARIANT converted;
  VariantInit(&converted);
  if (plain.vt == type) {
    std::swap(plain, converted);
  } else if (((plain.vt | type) & (VT_ARRAY | VT_BYREF)) != 0) {
    result = DISP_E_TYPEMISMATCH;
  } else {
    result = Convert(plain, flags, type, &converted);
    converted.vt = SUCCEEDED(result) ? type : VARTYPE{VT_EMPTY};
  }
  VariantClear(&plain);
  if (FAILED(result)) return result;

  result = VariantClear(target);
  if (FAILED(result)) {
    VariantClear(&converted);
    return result;
  }
  *target = converted;
  return S_OK;
}

HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags,
                          VARTYPE type) {
  return VariantChangeTypeEx(target, source, 0, flags, type);
}
