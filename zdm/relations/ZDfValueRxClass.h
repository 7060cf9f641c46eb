// The registry of field values: which type code makes which value. Filled when the module is
// registered (DllRegisterZModule), or by the rxInit() of a class; a host may add codes of its own.
#pragma once

#include "platform/Export.h"

struct ZDfValue;

struct ZDM_API ZDfValueRxClass {
  unsigned char type = 0;
  ZDfValueRxClass* next = nullptr;
  ZDfValue* (*creator)() = nullptr;

  /// Chains `record`, which comes from new and from then on belongs to the chain. False, and it
  /// stays the caller's, when it is null or its code is taken; 0 always is.
  static bool AddRxClass(ZDfValueRxClass* record);
  /// A new value (Release by the caller); null for 0 and for a code that is not registered. Without
  /// memory it throws.
  static ZDfValue* CreateZDfValue(unsigned char code);
  /// Frees every record; the chain and the records of the library's classes become null.
  static void ReleaseRxClassChain();

  static ZDfValueRxClass* g_pDesc;  ///< head of the chain, code 0; null while nothing is registered
};
