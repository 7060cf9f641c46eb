// Text from elsewhere: strings of any bytes, comparison, conversion, formatting, class identifiers.
// Each step is an operation byte and what the operation reads.
#include "fuzz/Fuzz.h"
#include "platform/ole/Bstr.h"
#include "platform/ole/CStringW.h"
#include "platform/system/Text.h"

#include <cstring>

namespace {

using zdm::Bstr;
using zdm::WideString;
using zdm::test::Require;

class Input {
 public:
  explicit Input(const std::vector<BYTE>& bytes)
      : left_(reinterpret_cast<const char*>(bytes.data()), bytes.size()) {}
  bool AtEnd() const { return left_.empty(); }
  BYTE Byte() {
    const std::string_view byte = Take(1);
    return byte.empty() ? BYTE{0} : static_cast<BYTE>(byte[0]);
  }
  /// Up to as many bytes as the next byte says.
  std::string_view Bytes() { return Take(Byte()); }
  WideString Units() {
    const std::string_view bytes = Bytes();
    WideString units(bytes.size() / sizeof(OLECHAR), 0);
    std::memcpy(units.data(), bytes.data(), units.size() * sizeof(OLECHAR));
    return units;
  }

 private:
  std::string_view Take(std::size_t size) {
    const std::string_view taken = left_.substr(0, size);
    left_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view left_;
};

/// A string of these bytes, of which the last may be half a unit.
Bstr StringOf(std::string_view bytes) {
  Bstr string;
  string.Attach(SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size())));
  const Bstr copy = string;
  Require(copy == string && string.Length() == bytes.size() / sizeof(OLECHAR));
  Require(std::memcmp(copy.Get(), bytes.data(), bytes.size()) == 0);
  return copy;
}

void Compare(const Bstr& left, const Bstr& right, ULONG flags) {
  const HRESULT forth = VarBstrCmp(left.Get(), right.Get(), LOCALE_USER_DEFAULT, flags);
  const HRESULT back = VarBstrCmp(right.Get(), left.Get(), LOCALE_USER_DEFAULT, flags);
  Require(forth >= 0 && back >= 0 && forth + back == 2);
  if (left.View() == right.View()) Require(forth == static_cast<HRESULT>(VARCMP_EQ));
}

void Convert(std::string_view bytes) {
  const WideString wide = zdm::FromUtf8(bytes);
  Require(wide.size() <= bytes.size());
  const std::string clean = zdm::ToUtf8(wide);
  Require(zdm::FromUtf8(clean) == wide);
}

void Format(const WideString& format, const Bstr& string, LONG number) {
  CStringW text(OLESTR("start"));
  text.Format(format.c_str(), number, string.Get(), text, ULONGLONG{7});
  CStringW twice = text + text;
  Require(twice.GetLength() == 2 * text.GetLength());
  Require(twice.CompareNoCase(twice) == 0);
  Bstr copy;
  copy.Attach(text.AllocSysString());
  Require(copy.View() == text.View());
}

void ReadClassId(const WideString& text) {
  CLSID id;
  if (FAILED(CLSIDFromString(text.c_str(), &id))) return;
  OLECHAR written[39];
  Require(StringFromGUID2(id, written, 39) == 39);
  Require(zdm::EqualIgnoringCase(written, text.c_str()));
}

}  // namespace

ZDM_FUZZ(bytes) {
  Input input(bytes);
  Bstr strings[4];
  while (!input.AtEnd()) {
    const BYTE operation = input.Byte();
    Bstr& string = strings[operation >> 6];
    switch (operation % 5) {
      case 0:
        string = StringOf(input.Bytes());
        break;
      case 1: {
        const Bstr& other = strings[input.Byte() % std::size(strings)];
        Compare(string, other, 0);
        Compare(string, other, NORM_IGNORECASE);
        break;
      }
      case 2:
        Convert(input.Bytes());
        break;
      case 3:
        Format(input.Units(), string, static_cast<LONG>(input.Byte()) - 128);
        break;
      default:
        ReadClassId(input.Units());
        break;
    }
  }
}
