// A GUID as two numbers that compare as its fields do, each unsigned: Data1, Data2, Data3, then the
// bytes of Data4 from the first. The order of everything that is sorted by GUID.
#pragma once

#include "platform/ole/ole.h"

#include <compare>

namespace zdm {

struct GuidKey {
  GuidKey() = default;
  explicit GuidKey(const GUID& guid)
      : high(ULONGLONG{guid.Data1} << 32 | ULONGLONG{guid.Data2} << 16 | guid.Data3) {
    for (const BYTE byte : guid.Data4) low = low << 8 | byte;
  }

  friend auto operator<=>(const GuidKey&, const GuidKey&) = default;  // NOLINT(*-use-nullptr)

  ULONGLONG high = 0;
  ULONGLONG low = 0;
};

}  // namespace zdm
