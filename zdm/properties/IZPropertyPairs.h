// A list of properties that are shown as pairs.
#pragma once

#include "zdm/framework/IZList.h"

struct IZProperty;

struct ZDM_INTERFACE IZPropertyPairs : IZList<IZObject, IZPropertyPairs, IZProperty> {
  /// Pairs do not merge: with other pairs these become read-only, `*result` is false and the answer
  /// 0. For anything else, null too, 1 and nothing changes.
  virtual LONG MergePairs(IZObject* other, bool* result) = 0;  // 34
};
