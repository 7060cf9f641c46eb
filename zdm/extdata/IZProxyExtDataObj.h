// Access to an item whose class is not known here: its class identifier and its data as bytes.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZProxyExtDataObj : IZObject {
  using CZObject::GetClassID;

  /// The class identifier of the item it stands for (borrowed); GUID_NULL when new.
  virtual const GUID* GetClassID() = 0;  // 3
  /// Null changes nothing.
  virtual void SetClassID(const GUID* classId) = 0;  // 4
  /// Returns the length in bytes; `*out` is a copy (CoTaskMemFree by the caller), null without
  /// bytes. Throws CAtlException(E_OUTOFMEMORY).
  virtual int GetData(void** out) = 0;  // 5
  /// Takes a copy of `length` bytes in place of those held; none for a length below 1.
  virtual void SetData(const void* data, int length) = 0;  // 6
};
