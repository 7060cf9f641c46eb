// A display device, as far as the library hands objects to it. Drawing an object (IZDisplay::Draw)
// passes the device on; what else a device does is between the host's objects and the host.
#pragma once

#include "platform/core/IZObject.h"

class GiContext;
struct IZDisplay;

struct ZDM_INTERFACE IZGiDevice : IZObject {
  /// The state in which a device takes further objects.
  static constexpr LONG kTakesObjects = 16;

  /// Shows `display` as selected.
  virtual void Select(IZDisplay* display) = 0;  // 3
  /// The same for an object whose status bit 14 is set.
  virtual void SelectMarked(IZDisplay* display) = 0;  // 4
  /// The context for drawing the objects whose option mask holds every bit of `mask` (borrowed,
  /// alive until they are drawn); it goes to DrawObject unchanged and may be null.
  virtual GiContext* GetContext(LONGLONG mask) = 0;  // 5
  /// Asked before each DrawObject; any answer but kTakesObjects ends the drawing of a collection.
  virtual LONG GetState() = 0;  // 6
  /// Draws `display`, which is not null. Whether that goes through IZDisplay::Draw is the device's
  /// decision.
  virtual void DrawObject(IZDisplay* display, GiContext* context) = 0;  // 7
};
