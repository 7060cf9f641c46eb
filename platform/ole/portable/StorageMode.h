// What an access mode (STGM_…) says.
#pragma once

#include "platform/ole/portable/Stream.h"

namespace zdm {

constexpr DWORD kModeAccess = 0x00000003;
constexpr DWORD kModeShare = 0x00000070;

constexpr bool IsWritable(DWORD mode) { return (mode & kModeAccess) != STGM_READ; }
constexpr bool IsTransacted(DWORD mode) { return (mode & STGM_TRANSACTED) != 0; }

/// The known bits in a known combination; else STG_E_INVALIDFLAG.
constexpr HRESULT CheckMode(DWORD mode) {
  constexpr DWORD kKnown =
      kModeAccess | kModeShare | STGM_CREATE | STGM_TRANSACTED | STGM_NOSCRATCH | STGM_NOSNAPSHOT;
  const bool known = (mode & ~kKnown) == 0 && (mode & kModeAccess) != 3 &&
                     (mode & kModeShare) <= STGM_SHARE_DENY_NONE;
  return known ? S_OK : STG_E_INVALIDFLAG;
}

/// Whether a root may be made: for writing, and alone unless it is transacted.
constexpr HRESULT CheckCreateMode(DWORD mode) {
  const bool alone = IsTransacted(mode) || (mode & kModeShare) == STGM_SHARE_EXCLUSIVE;
  return IsWritable(mode) && alone ? CheckMode(mode) : STG_E_INVALIDFLAG;
}

/// Whether a root may be opened: unless it is transacted, alone, or for reading while nobody
/// writes.
constexpr HRESULT CheckOpenMode(DWORD mode) {
  const DWORD share = mode & kModeShare;
  const bool safe = IsTransacted(mode) || share == STGM_SHARE_EXCLUSIVE ||
                    (share == STGM_SHARE_DENY_WRITE && !IsWritable(mode));
  return safe && (mode & STGM_CREATE) == 0 ? CheckMode(mode) : STG_E_INVALIDFLAG;
}

/// Elements are opened exclusively, as the system wants it; else STG_E_INVALIDFLAG.
constexpr HRESULT CheckElementMode(DWORD mode) {
  return (mode & kModeShare) == STGM_SHARE_EXCLUSIVE ? CheckMode(mode) : STG_E_INVALIDFLAG;
}

}  // namespace zdm
