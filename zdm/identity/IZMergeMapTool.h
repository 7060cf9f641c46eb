// What a merge of two documents is driven through: the ID map, the questions to the target
// document, and the progress.
#pragma once

#include "zdm/identity/IZReltnMapID.h"

struct IZDMObjColl;
struct IZDMObjMgr;
struct IZProgressMeter;

struct ZDM_INTERFACE IZMergeMapTool : IZReltnMapID {
  /// Copies `object` and the valid objects below it: COIDManager::CloneEx of the target's table.
  virtual void AddItem(IZDMObject* object, IZDMObjColl* added) = 0;  // 22
  /// The target's word on the pair: an eZMergeOption; 0 without a target.
  virtual BYTE GetMergeOption(IZDMObject* source, IZDMObject* target) = 0;  // 23
  /// Merges the contents of two managers as the target's merge strategy does; nothing without one.
  virtual void MergeCurrentNode(IZDMObjMgr* source, IZDMObjMgr* target, IZDMObjColl* added,
                                IZDMObjColl* replaced) = 0;  // 24
  /// One step further.
  virtual void MeterProgress() = 0;  // 25
  /// One reference is held; null for none.
  virtual void SetMeterProgress(IZProgressMeter* meter) = 0;  // 26
  virtual IZProgressMeter* GetMeterProgress() = 0;            // 27
};
