#include "platform/ole/CStringW.h"

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"

#include <algorithm>

namespace {

using zdm::FormatValue;
using zdm::WideString;
using zdm::WideView;

constexpr std::size_t kMaxWidth = 255;

struct Conversion {
  bool left = false;
  bool zeros = false;
  std::size_t width = 0;
  OLECHAR kind = 0;  // 0: the format ends inside it
};

// Reads what follows the percent sign at `at` and moves past it.
Conversion ReadConversion(WideView format, std::size_t& at) {
  Conversion result;
  for (; at < format.size() && (format[at] == OLESTR('-') || format[at] == OLESTR('0')); ++at) {
    (format[at] == OLESTR('-') ? result.left : result.zeros) = true;
  }
  for (; at < format.size() && format[at] >= OLESTR('0') && format[at] <= OLESTR('9'); ++at) {
    result.width = std::min(result.width * 10 + (format[at] - OLESTR('0')), kMaxWidth);
  }
  if (at < format.size()) result.kind = format[at++];
  return result;
}

WideString Digits(ULONGLONG value, unsigned base, bool capitals) {
  const OLECHAR* digits = capitals ? OLESTR("0123456789ABCDEF") : OLESTR("0123456789abcdef");
  WideString result;
  do {
    result.insert(result.begin(), digits[value % base]);
    value /= base;
  } while (value != 0);
  return result;
}

void Pad(WideString& out, const Conversion& conversion, WideView sign, WideView body) {
  const std::size_t length = sign.size() + body.size();
  const std::size_t gap = conversion.width > length ? conversion.width - length : 0;
  const bool zeros = conversion.zeros && !conversion.left && conversion.kind != OLESTR('s') &&
                     conversion.kind != OLESTR('c');
  if (!conversion.left && !zeros) out.append(gap, OLESTR(' '));
  out += sign;
  if (zeros) out.append(gap, OLESTR('0'));
  out += body;
  if (conversion.left) out.append(gap, OLESTR(' '));
}

// False when the conversion does not fit the value.
bool Write(WideString& out, const Conversion& conversion, const FormatValue& value) {
  if (conversion.kind == OLESTR('s')) {
    if (!value.isText) return false;
    Pad(out, conversion, {}, value.text == nullptr ? OLESTR("(null)") : value.text);
    return true;
  }
  if (value.isText) return false;
  // Read as unsigned, a negative value has the bits of its own width.
  const ULONGLONG bits = value.size < sizeof(value.bits)
                             ? value.bits & ((ULONGLONG{1} << (8 * value.size)) - 1)
                             : value.bits;
  const bool negative = value.isSigned && static_cast<LONGLONG>(value.bits) < 0;
  switch (conversion.kind) {
    case OLESTR('d'):
    case OLESTR('i'):
      Pad(out, conversion, negative ? OLESTR("-") : OLESTR(""),
          Digits(negative ? 0 - value.bits : value.bits, 10, false));
      return true;
    case OLESTR('u'):
      Pad(out, conversion, {}, Digits(bits, 10, false));
      return true;
    case OLESTR('x'):
    case OLESTR('X'):
      Pad(out, conversion, {}, Digits(bits, 16, conversion.kind == OLESTR('X')));
      return true;
    case OLESTR('c'): {
      const auto unit = static_cast<OLECHAR>(bits);
      Pad(out, conversion, {}, WideView(&unit, 1));
      return true;
    }
    default:
      return false;
  }
}

WideString LowerCase(WideView text) {
  WideString lower(text);
  CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
  return lower;
}

}  // namespace

CStringW::CStringW(const OLECHAR* text) {
  if (text != nullptr) text_ = text;
}

CStringW::CStringW(const OLECHAR* text, LONG length) {
  if (text != nullptr && length > 0) text_.assign(text, static_cast<std::size_t>(length));
}

BSTR CStringW::AllocSysString() const { return zdm::Bstr(View()).Detach(); }

CStringW& CStringW::operator+=(const OLECHAR* text) {
  if (text != nullptr) text_ += text;
  return *this;
}

CStringW& CStringW::operator+=(const CStringW& text) {
  text_ += text.text_;
  return *this;
}

CStringW& CStringW::operator+=(OLECHAR unit) {
  text_ += unit;
  return *this;
}

int CStringW::Compare(const CStringW& other) const { return text_.compare(other.text_); }

int CStringW::CompareNoCase(const CStringW& other) const {
  return LowerCase(text_).compare(LowerCase(other.text_));
}

void CStringW::Assign(const OLECHAR* format, std::initializer_list<FormatValue> values) {
  const WideView text = format == nullptr ? WideView() : WideView(format);
  WideString out;
  const FormatValue* next = values.begin();
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] != OLESTR('%')) {
      out += text[at++];
      continue;
    }
    const std::size_t start = at++;
    const Conversion conversion = ReadConversion(text, at);
    if (conversion.kind == OLESTR('%')) {
      out += OLESTR('%');
    } else if (next == values.end() || !Write(out, conversion, *next++)) {
      out += text.substr(start, at - start);
    }
  }
  text_ = std::move(out);
}
