// A path of objects from the document root through nested references, as the host builds and
// shows it; the library pools the same path as a PID.
// The library creates paths by class identifier {1DB813D4-9E9D-4FC6-A01B-014C44778E4B}, empty, and
// fills them with Append. Objects: one reference each, never null.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObject;

struct ZDM_INTERFACE IZOptPath : IZObject {
  virtual LONG GetCount() = 0;  // 3
  /// Position of the outermost object, 0 for an empty path.
  virtual LONGLONG GetHeadPosition() = 0;  // 4
  /// Object at `position` (borrowed, never null); moves `position` on towards the bottom, 0 past
  /// the end. Throws CAtlException(E_FAIL) if `position` is 0.
  virtual IZDMObject* GetNext(LONGLONG& position) = 0;  // 5
  /// Adds `object`, which is not null, at the bottom. The same object may be on a path twice.
  virtual void Append(IZDMObject* object) = 0;  // 6
  /// The innermost object (borrowed), null for an empty path.
  virtual IZDMObject* GetBottomObject() = 0;  // 7
};
