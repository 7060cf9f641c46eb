// Facts about the running application that the library needs.
#pragma once

#include "platform/ole/ole.h"

class ZDM_API CZGlobalData {
 public:
  /// The identifier of the application, which is also the key of its own extended data.
  static const GUID& GetZAppID();
  /// For the host, once at its start; GUID_NULL restores the library's own identifier.
  static void SetZAppID(const GUID& appId);
};
