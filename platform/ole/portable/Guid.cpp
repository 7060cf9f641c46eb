#include "platform/ole/portable/Guid.h"

namespace {

constexpr int kGuidTextUnits = 39;  // braces, 32 hex digits, 4 hyphens, terminator

OLECHAR* PutHex(OLECHAR* out, std::uint32_t value, int digits) {
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
    *out++ = static_cast<OLECHAR>(u"0123456789ABCDEF"[(value >> shift) & 0xF]);
  }
  return out;
}

}  // namespace

int StringFromGUID2(REFGUID guid, OLECHAR* text, int capacity) {
  if (text == nullptr || capacity < kGuidTextUnits) return 0;
  OLECHAR* out = text;
  *out++ = u'{';
  out = PutHex(out, guid.Data1, 8);
  *out++ = u'-';
  out = PutHex(out, guid.Data2, 4);
  *out++ = u'-';
  out = PutHex(out, guid.Data3, 4);
  for (int i = 0; i < 8; ++i) {
    if (i == 0 || i == 2) *out++ = u'-';
    out = PutHex(out, guid.Data4[i], 2);
  }
  *out++ = u'}';
  *out = u'\0';
  return kGuidTextUnits;
}
