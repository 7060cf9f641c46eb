// How the contents of a manager of another document are merged into one of this document.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObjColl;
struct IZDMObjMgr;
struct IZMergeMapTool;

struct ZDM_INTERFACE IZMergeStrategy : IZObject {
  /// Merges every valid object of `source` into `target`; none of the arguments is null. References
  /// are rewritten afterwards, from what the strategy reports:
  /// - an object that has a counterpart: the pair, with `tool`'s AddMapIDPair;
  /// - an object to be copied: `tool`'s AddItem, which gives the copies new IDs and lists them in
  ///   `added`; the caller puts them into their managers;
  /// - a counterpart whose data is replaced: a clone of the old data, appended to `replaced`.
  /// COIDManager::MergeMgr without a special pair does this by the options of the document.
  virtual void Merge(IZDMObjMgr* source, IZDMObjMgr* target, IZMergeMapTool* tool,
                     IZDMObjColl* added, IZDMObjColl* replaced) = 0;  // 3
};
