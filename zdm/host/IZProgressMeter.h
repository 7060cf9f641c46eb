// Shows how far a long operation has come: loading and reading objects, copying, merging.
// An ID table holds the meter that its owner gave it, a merge tool the one of IZMergeMapTool.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZProgressMeter : IZObject {
  /// Number of steps to expect: the size of the ID table, told once the table is loaded. Merging
  /// and copying tell no range.
  virtual void SetRange(LONG range) = 0;  // 3
  /// `steps` more are done. Their sum can pass the range: every record read counts, also one that
  /// is not listed. Must not change the document.
  virtual void Step(LONG steps) = 0;  // 4
};
