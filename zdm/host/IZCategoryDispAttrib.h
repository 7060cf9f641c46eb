// The display attribute that shows an object with the values of its category. The library creates
// it by class identifier {8D9C4060-4B83-4380-AB79-C6152E3655EF}, calls the three operations once
// each in their order, and lets go of it.
#pragma once

#include "platform/core/IZObject.h"

struct IZCategory;
struct IZDisplay;

struct ZDM_INTERFACE IZCategoryDispAttrib : IZObject {
  /// The category to take display values from; not null here, and owned by its manager.
  virtual void SetCategory(IZCategory* category) = 0;  // 3
  virtual void SetEnabled(bool enabled) = 0;           // 4
  /// Hands this attribute's IZDispAttrib view to `display` (IZDisplay::AttachDispAttrib). A display
  /// that has no use for attributes ignores it; one that keeps it takes a reference.
  virtual void AttachTo(IZDisplay* display) = 0;  // 5
};
