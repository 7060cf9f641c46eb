// A small string of 16-bit text: environment values, program names, diagnostics. It holds its own
// copy, zeros included, and always converts to zero-terminated text; null counts as empty.
#pragma once

#include "platform/ole/ole.h"

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>

class CStringW;

namespace zdm {

/// One value for CStringW::Format: an integer of up to 64 bits or zero-terminated text (borrowed).
struct FormatValue {
  template <std::integral T>
  FormatValue(T value)
      : bits(static_cast<ULONGLONG>(value)), size(sizeof(T)), isSigned(std::is_signed_v<T>) {}
  FormatValue(const OLECHAR* value) : text(value), isText(true) {}
  FormatValue(const CStringW& value);

  ULONGLONG bits = 0;  // sign-extended
  std::size_t size = 0;
  const OLECHAR* text = nullptr;
  bool isSigned = false;
  bool isText = false;
};

}  // namespace zdm

class ZDM_API CStringW {
 public:
  CStringW() = default;
  CStringW(const OLECHAR* text);
  CStringW(const OLECHAR* text, LONG length);
  explicit CStringW(std::basic_string_view<OLECHAR> text) : text_(text) {}

  /// In units.
  LONG GetLength() const { return static_cast<LONG>(text_.size()); }
  bool IsEmpty() const { return text_.empty(); }
  void Empty() { text_.clear(); }
  /// Borrowed, until the next change.
  const OLECHAR* GetString() const { return text_.c_str(); }
  operator const OLECHAR*() const { return text_.c_str(); }
  std::basic_string_view<OLECHAR> View() const { return text_; }
  /// A copy as a BSTR for the caller. Throws CAtlException(E_OUTOFMEMORY).
  BSTR AllocSysString() const;

  CStringW& operator+=(const OLECHAR* text);
  CStringW& operator+=(const CStringW& text);
  CStringW& operator+=(OLECHAR unit);
  friend CStringW operator+(CStringW left, const OLECHAR* right) {
    left += right;
    return left;
  }
  friend CStringW operator+(CStringW left, const CStringW& right) {
    left += right;
    return left;
  }
  friend CStringW operator+(const OLECHAR* left, const CStringW& right) {
    CStringW joined(left);
    joined += right;
    return joined;
  }

  /// Negative, 0 or positive: code unit by code unit.
  int Compare(const CStringW& other) const;
  /// The same after CharLowerBuffW on both: for environment values and other technical text. Names
  /// and patterns compare with zdm::EqualIgnoringCase.
  int CompareNoCase(const CStringW& other) const;
  friend bool operator==(const CStringW& left, const CStringW& right) {
    return left.text_ == right.text_;
  }
  friend bool operator==(const CStringW& left, const OLECHAR* right) {
    return left == CStringW(right);
  }

  /// Replaces the text by `format`, in which %d and %i (signed), %u, %x and %X (unsigned, of the
  /// value's own width), %c (one unit), %s (text; null gives "(null)") stand for the values in
  /// turn, with the flags '-' and '0' and a width up to 255; %% is a percent sign. A conversion
  /// without a value, or of the other kind than its value, is written as it stands. Values and
  /// format may be parts of this string.
  template <typename... Values>
  void Format(const OLECHAR* format, const Values&... values) {
    Assign(format, {zdm::FormatValue(values)...});
  }

 private:
  void Assign(const OLECHAR* format, std::initializer_list<zdm::FormatValue> values);

  std::basic_string<OLECHAR> text_;
};

inline zdm::FormatValue::FormatValue(const CStringW& value)
    : text(value.GetString()), isText(true) {}
