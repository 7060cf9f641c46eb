// Owning wrapper of a BSTR, and the two ways in which names are compared.
// A Bstr holds null or one string that it frees; null and empty stay apart. Whatever allocates
// throws CAtlException(E_OUTOFMEMORY) when memory runs out.
#pragma once

#include "platform/ole/CAtlException.h"
#include "platform/ole/ole.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace zdm {

/// Equal as names: the user's default locale, case and accents count, null equals empty.
inline bool SameName(BSTR left, BSTR right) {
  return VarBstrCmp(left, right, LOCALE_USER_DEFAULT, 0) == static_cast<HRESULT>(VARCMP_EQ);
}

/// Equal code unit by code unit over their whole length; null equals only null.
inline bool SameUnits(BSTR left, BSTR right) {
  if (left == nullptr || right == nullptr) return left == right;
  const UINT length = SysStringLen(left);
  return length == SysStringLen(right) && std::memcmp(left, right, length * sizeof(OLECHAR)) == 0;
}

class Bstr {
 public:
  Bstr() noexcept = default;
  /// A copy of zero-terminated `text`; null for null.
  explicit Bstr(const OLECHAR* text) : string_(Checked(SysAllocString(text), text == nullptr)) {}
  /// A copy of `length` units, zeros included; of null, a string of that length whose units the
  /// caller sets.
  Bstr(const OLECHAR* text, UINT length)
      : string_(Checked(SysAllocStringLen(text, length), false)) {}
  /// A copy of the units of `text`; never null.
  explicit Bstr(std::basic_string_view<OLECHAR> text)
      : string_(Checked(text.size() > kMaxLength
                            ? nullptr
                            : SysAllocStringLen(text.empty() ? OLESTR("") : text.data(),
                                                static_cast<UINT>(text.size())),
                        false)) {}
  Bstr(const Bstr& other) : string_(CopyOf(other.string_).Detach()) {}
  Bstr(Bstr&& other) noexcept : string_(other.Detach()) {}
  ~Bstr() { SysFreeString(string_); }

  Bstr& operator=(Bstr other) noexcept {
    std::swap(string_, other.string_);
    return *this;
  }

  /// A copy of a whole BSTR, zeros and an odd last byte included; null for null.
  static Bstr CopyOf(BSTR string) {
    Bstr copy;
    if (string != nullptr) {
      copy.string_ = Checked(
          SysAllocStringByteLen(reinterpret_cast<const char*>(string), SysStringByteLen(string)),
          false);
    }
    return copy;
  }

  /// Takes `string` over; the present one is freed.
  void Attach(BSTR string) noexcept {
    if (string != string_) SysFreeString(string_);
    string_ = string;
  }
  /// Gives the string to the caller and leaves null.
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(string_, nullptr); }
  /// For an out-pointer: frees the present string and lets the call store another.
  [[nodiscard]] BSTR* Out() noexcept {
    SysFreeString(Detach());
    return &string_;
  }
  /// Stores a copy, which the caller frees, in `*out`.
  void CopyTo(BSTR* out) const { *out = CopyOf(string_).Detach(); }

  /// The string itself (borrowed, may be null).
  BSTR Get() const noexcept { return string_; }
  /// In units; 0 for null.
  UINT Length() const noexcept { return SysStringLen(string_); }
  bool IsNull() const noexcept { return string_ == nullptr; }
  /// Null, or without a unit.
  bool IsEmpty() const noexcept { return Length() == 0; }
  /// The units (borrowed); empty for null.
  std::basic_string_view<OLECHAR> View() const noexcept {
    return string_ == nullptr ? std::basic_string_view<OLECHAR>()
                              : std::basic_string_view<OLECHAR>(string_, Length());
  }

  /// As SameUnits.
  friend bool operator==(const Bstr& left, const Bstr& right) noexcept {
    return SameUnits(left.string_, right.string_);
  }

 private:
  static constexpr std::size_t kMaxLength = 0x3FFFFFF0;

  static BSTR Checked(BSTR string, bool mayBeNull) {
    if (string == nullptr && !mayBeNull) throw CAtlException(E_OUTOFMEMORY);
    return string;
  }

  BSTR string_ = nullptr;
};

}  // namespace zdm
