// A small ordered set of GUIDs; not a property.
#pragma once

#include "platform/core/IZObject.h"

#include <list>

struct ZDM_INTERFACE IZPropKeyArray : IZObject {
  /// The key's entry in the list (borrowed): a new one at the end, or the one it has.
  virtual const GUID* AddKey(const GUID& key) = 0;  // 3
  /// The list itself (borrowed).
  virtual const std::list<GUID>* GetKeys() = 0;  // 4
  virtual bool IsEmpty() = 0;                    // 5
};
