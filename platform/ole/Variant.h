// Owning wrapper of a VARIANT. It frees what it holds and copies deep, and a null text stays apart
// from an empty one. A copy that fails throws CAtlException: E_OUTOFMEMORY, E_INVALIDARG, or E_FAIL
// for any other reason; CopyVariant tells the reason.
#pragma once

#include "platform/ole/CAtlException.h"
#include "platform/ole/ole.h"

#include <utility>

namespace zdm {

/// VariantCopy that leaves a null text null, as not every system's does. Returns its result.
inline HRESULT CopyVariant(VARIANT* target, const VARIANT& source) {
  // Not every system's headers have the source const.
  const HRESULT result = VariantCopy(target, const_cast<VARIANT*>(&source));
  if (SUCCEEDED(result) && source.vt == VT_BSTR && source.bstrVal == nullptr) {
    SysFreeString(std::exchange(target->bstrVal, nullptr));
  }
  return result;
}

/// Whether a DECIMAL has a scale up to 28 and no bits beside its sign's. Not every system asks, and
/// one that does not may write past its buffers.
inline bool IsSound(const DECIMAL& number) {
  constexpr BYTE kMaxScale = 28;
  return number.scale <= kMaxScale && (number.sign & ~DECIMAL_NEG) == 0;
}

/// VariantChangeTypeEx through the invariant locale, so that texts are the same everywhere. A null
/// text that stays text stays null; as a number it is no number. E_INVALIDARG for a DECIMAL that is
/// not sound.
inline HRESULT ConvertVariant(VARIANT* target, const VARIANT& source, VARTYPE type,
                              USHORT flags = 0) {
  if (type == VT_BSTR && source.vt == VT_BSTR) return CopyVariant(target, source);
  if (source.vt == VT_DECIMAL && !IsSound(source.decVal)) return E_INVALIDARG;
  return VariantChangeTypeEx(target, const_cast<VARIANT*>(&source), LOCALE_INVARIANT, flags, type);
}

class Variant {
 public:
  Variant() noexcept { VariantInit(&value_); }
  /// A copy of `value`.
  explicit Variant(const VARIANT& value) : Variant() { Check(CopyVariant(&value_, value)); }
  Variant(const Variant& other) : Variant(other.value_) {}
  Variant(Variant&& other) noexcept : value_(other.Detach()) {}
  ~Variant() { VariantClear(&value_); }

  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  static Variant FromLong(LONG number) {
    Variant made(VARTYPE{VT_I4});
    made.value_.lVal = number;
    return made;
  }
  static Variant FromDouble(double number) {
    Variant made(VARTYPE{VT_R8});
    made.value_.dblVal = number;
    return made;
  }
  static Variant FromBool(bool flag) {
    Variant made(VARTYPE{VT_BOOL});
    made.value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return made;
  }
  /// A copy of zero-terminated `text`; null gives a null text.
  static Variant FromText(const OLECHAR* text) {
    Variant made(VARTYPE{VT_BSTR});
    made.value_.bstrVal = SysAllocString(text);
    if (text != nullptr && made.value_.bstrVal == nullptr) throw CAtlException(E_OUTOFMEMORY);
    return made;
  }

  VARTYPE type() const noexcept { return value_.vt; }
  bool IsEmpty() const noexcept { return value_.vt == VT_EMPTY; }
  /// The value itself (borrowed).
  const VARIANT& Get() const noexcept { return value_; }

  /// Converts in place through the invariant locale; the value is unchanged when it fails.
  HRESULT ChangeType(VARTYPE type) {
    return ConvertVariant(&value_, value_, type, VARIANT_NOVALUEPROP);
  }

  /// Clears `*out` and copies the value into it.
  void CopyTo(VARIANT* out) const { Check(CopyVariant(out, value_)); }
  /// For an out-pointer: clears the value, which is no locked array, and lets the call store
  /// another.
  [[nodiscard]] VARIANT* Out() noexcept {
    VariantClear(&value_);
    return &value_;
  }
  /// Takes over what `value` owns; the present value, which is no locked array, is cleared.
  void Attach(const VARIANT& value) noexcept { *Out() = value; }
  /// Gives the value to the caller and leaves an empty one.
  [[nodiscard]] VARIANT Detach() noexcept {
    const VARIANT value = value_;
    VariantInit(&value_);
    return value;
  }

 private:
  explicit Variant(VARTYPE type) : Variant() { value_.vt = type; }

  static void Check(HRESULT result) {
    if (SUCCEEDED(result)) return;
    const bool telling = result == E_OUTOFMEMORY || result == E_INVALIDARG;
    throw CAtlException(telling ? result : E_FAIL);
  }

  VARIANT value_;
};

}  // namespace zdm
