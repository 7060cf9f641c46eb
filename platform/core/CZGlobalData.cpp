#include "platform/core/CZGlobalData.h"

namespace {

// The library's own identifier, for programs that set none.
constexpr GUID kDefaultAppID = {
    0x5E0D3C1A, 0x8B52, 0x4F6E, {0x9A, 0x41, 0x2C, 0x7D, 0x90, 0xE6, 0x3B, 0x18}};

GUID appID = kDefaultAppID;

}  // namespace

const GUID& CZGlobalData::GetZAppID() { return appID; }

void CZGlobalData::SetZAppID(const GUID& appId) {
  appID = appId == GUID_NULL ? kDefaultAppID : appId;
}
