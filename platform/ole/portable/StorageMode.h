// What an access mode (STGM_…) says.
#pragma once

#include "platform/ole/portable/Stream.h"

namespace zdm {

constexpr DWORD kModeAccess = 0x00000003;
constexpr DWORD kModeShare = 0x00000070;

constexpr bool IsWritable(DWORD mode) {
  return (mode & kModeAccess) != STGM_READ;
}
constexpr bool IsTransacted(DWORD mode) {
  return (mode & STGM_TRANSACTED) != 0;
}

/// The known bits in a known combination; else STG_E_INVALIDFLAG.
constexpr HRESULT CheckMode(DWORD mode) {
  constexpr DWORD kKnown =
      kModeAccess | kModeShare | STGM_CREATE | STGM_TRANSACTED | STGM_NOSCRATCH | STGM_NOSNAPSHOT;
  const bool known = (mode & ~kKnown) == 0 && (mode & kModeAccess) != 3 &&
                     (mode & kModeShare) <= STGM_SHARE_DENY_NONE;
  return known ? S_OK : STG_E_INVALIDFLAG;
}

/// Elements are opened exclusively, as the system wants it; else STG_E_INVALIDFLAG.
constexpr HRESULT CheckElementMode(DWORD mode) {
  return (mode & kModeShare) == STGM_SHARE_EXCLUSIVE ? CheckMode(mode) : STG_E_INVALIDFLAG;
}

}  // namespace zdm
