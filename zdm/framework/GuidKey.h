// A GUID as two numbers that compare as its fields do, each unsigned: Data1, Data2, Data3, then the
// bytes of Data4 from the first. The order of everything that is sorted by GUID.
#pragma once

#include "platform/ole/ole.h"

#include <compare>

namespace zdm {

struct GuidKey {
  GuidKey() = default;
  explicit GuidKey(const GUID& guid)
      : high(ULONGLONG{guid.Data1} << 32 | ULONGLONG{guid.Data2} << 16 | guid.Data3),
        low(BigEndian(guid.Data4)) {}

  friend auto operator<=>(const GuidKey&, const GuidKey&) = default;  // NOLINT(*-use-nullptr)

  ULONGLONG high = 0;
  ULONGLONG low = 0;

 private:
  /// In one expression, which compilers see through.
  static ULONGLONG BigEndian(const BYTE (&bytes)[8]) {
    return ULONGLONG{bytes[0]} << 56 | ULONGLONG{bytes[1]} << 48 | ULONGLONG{bytes[2]} << 40 |
           ULONGLONG{bytes[3]} << 32 | ULONGLONG{bytes[4]} << 24 | ULONGLONG{bytes[5]} << 16 |
           ULONGLONG{bytes[6]} << 8 | bytes[7];
  }
};

}  // namespace zdm
