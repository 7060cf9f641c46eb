// Strings: allocation and reallocation against a model, comparison, conversion, formatting.
// Each step is an operation byte, a slot byte and what the operation reads.
#include "platform/ole/Bstr.h"
#include "platform/ole/CStringW.h"
#include "platform/system/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using zdm::Bstr;
using zdm::WideString;
using zdm::WideView;

void Require(bool condition) {
  if (!condition) std::abort();
}

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
  bool AtEnd() const { return left_ == 0; }
  std::uint8_t Byte() { return AtEnd() ? std::uint8_t{0} : *Take(1); }
  /// Up to as many bytes as the next byte says.
  std::string_view Bytes() {
    const std::size_t size = std::min<std::size_t>(Byte(), left_);
    return {reinterpret_cast<const char*>(Take(size)), size};
  }
  /// Code units of two bytes each.
  WideString Units() {
    const std::string_view bytes = Bytes();
    WideString units(bytes.size() / sizeof(OLECHAR), 0);
    std::memcpy(units.data(), bytes.data(), units.size() * sizeof(OLECHAR));
    return units;
  }

 private:
  const std::uint8_t* Take(std::size_t size) {
    const std::uint8_t* start = data_;
    data_ += size;
    left_ -= size;
    return start;
  }

  const std::uint8_t* data_;
  std::size_t left_;
};

// A string and what it must hold; `null` and an odd last byte are part of that.
struct Slot {
  Bstr string;
  WideString units;
  bool null = true;

  void Set(BSTR made, const WideString& expected) {
    string.Attach(made);
    units = expected;
    null = made == nullptr;
  }
  void Check() const {
    Require(string.IsNull() == null);
    Require(string.View() == units);
    if (!null && SysStringByteLen(string.Get()) % 2 == 0) {
      Require(string.Get()[units.size()] == 0);
    }
  }
};

void Realloc(Slot& slot, Input& input) {
  BSTR string = slot.string.Detach();
  const WideString former = slot.units;
  WideString expected;
  switch (input.Byte() % 3) {
    case 0: {  // a part of itself
      const UINT start = former.empty() ? 0 : static_cast<UINT>(input.Byte() % former.size());
      const UINT length = static_cast<UINT>(former.size()) - start;
      if (string == nullptr) break;
      Require(SysReAllocStringLen(&string, string + start, length) != FALSE);
      expected = former.substr(start, length);
      break;
    }
    case 1: {  // another length
      const UINT length = input.Byte();
      const std::size_t kept = std::min<std::size_t>(former.size(), length);
      Require(SysReAllocStringLen(&string, nullptr, length) != FALSE);
      std::fill(string + kept, string + length, OLESTR('x'));
      expected = former.substr(0, kept).append(length - kept, OLESTR('x'));
      break;
    }
    default: {  // other text, up to its first zero
      expected = input.Units();
      expected.resize(std::min(expected.find(OLECHAR{0}), expected.size()));
      Require(SysReAllocString(&string, expected.c_str()) != FALSE);
      break;
    }
  }
  slot.Set(string, expected);
}

void Compare(const Slot& left, const Slot& right, ULONG flags) {
  const HRESULT forth =
      VarBstrCmp(left.string.Get(), right.string.Get(), LOCALE_USER_DEFAULT, flags);
  const HRESULT back =
      VarBstrCmp(right.string.Get(), left.string.Get(), LOCALE_USER_DEFAULT, flags);
  Require(forth >= 0 && back >= 0 && forth + back == 2);
  if (left.units == right.units) Require(forth == static_cast<HRESULT>(VARCMP_EQ));
}

void Convert(std::string_view bytes) {
  const WideString wide = zdm::FromUtf8(bytes);
  Require(wide.size() <= bytes.size());
  const std::string clean = zdm::ToUtf8(wide);
  Require(zdm::FromUtf8(clean) == wide);
}

void Format(const WideString& format, const Slot& slot, LONG number) {
  CStringW text(OLESTR("start"));
  text.Format(format.c_str(), number, slot.string.Get(), text, ULONGLONG{7});
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  std::array<Slot, 4> slots;
  while (!input.AtEnd()) {
    const std::uint8_t operation = input.Byte();
    Slot& slot = slots[input.Byte() % slots.size()];
    switch (operation % 9) {
      case 0: {
        const WideString units = input.Units();
        slot.Set(SysAllocStringLen(units.data(), static_cast<UINT>(units.size())), units);
        break;
      }
      case 1: {
        const std::string_view bytes = input.Bytes();
        WideString units(bytes.size() / sizeof(OLECHAR), 0);
        std::memcpy(units.data(), bytes.data(), units.size() * sizeof(OLECHAR));
        slot.Set(SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size())), units);
        break;
      }
      case 2:
        Realloc(slot, input);
        break;
      case 3: {
        const Slot& other = slots[input.Byte() % slots.size()];
        slot = Slot(other);
        break;
      }
      case 4:
        slot.Set(nullptr, {});
        break;
      case 5: {
        const Slot& other = slots[input.Byte() % slots.size()];
        Compare(slot, other, 0);
        Compare(slot, other, NORM_IGNORECASE);
        break;
      }
      case 6:
        Convert(input.Bytes());
        break;
      case 7:
        Format(input.Units(), slot, static_cast<LONG>(input.Byte()) - 128);
        break;
      default:
        ReadClassId(input.Units());
        break;
    }
    slot.Check();
  }
  return 0;
}
