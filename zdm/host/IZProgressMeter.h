// Shows how far a long operation has come: loading and reading objects, copying, merging.
// Three may have one: an ID table, from its owner; a merge tool (IZMergeMapTool); and a manager
// that merges from another, if its class supplies one.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZProgressMeter : IZObject {
  /// Number of steps to expect: the size of the ID table, told once the table is loaded. Merging
  /// and copying tell no range.
  virtual void SetRange(LONG range) = 0;  // 3
  /// `steps` more are done: 1 for an object, 2 when a manager begins to merge. Their sum can pass
  /// the range: every record read counts, also one that is not listed. Must not change the
  /// document.
  virtual void Step(LONG steps) = 0;  // 4
};
