// The root of every interface. CZObject is a virtual base, so each interface view of an object
// reaches the one count and the one identity with a pointer adjustment.
// Interfaces have no data, declare no destructor and keep their operations in the documented order;
// the number behind an operation is its place, counted from 0 at Release.
#pragma once

#include "platform/core/CZObject.h"

struct ZDM_INTERFACE IZObject : virtual CZObject {
  /// Gives up one reference; the last one ends the object. Returns the new count.
  virtual ULONG Release() = 0;  // 0
  /// Takes one reference. Returns the new count.
  virtual ULONG AddRef() = 0;  // 1
  /// A new object with count 0, or null where the class cannot be copied.
  virtual IZObject* Clone() = 0;  // 2
};
