// How the objects of a manager of another document come into one of this document.
#pragma once

#include "platform/ole/ole.h"

struct IZDMObjColl;
struct IZDMObjMgr;
struct IZDMObject;
struct IZDatabase;
struct IZMergeMapTool;
struct IZProgressMeter;
struct IZReltnMapID;

namespace zdm {

/// See IZDMObjMgrImpl::MergeFrom.
ZDM_API LONG MergeManagers(IZDMObjMgr& target, IZDMObjMgr* source, IZDMObjColl* added,
                           IZDMObjColl* existing, IZMergeMapTool* mapTool, IZDMObject* sourceNode,
                           IZDMObject* targetNode);

/// The end of every merge: the objects of `added` come into the managers that `map` names for their
/// owners, and what they and the objects replaced refer to is led over.
/// @param existing  clones of the objects replaced, under their IDs.
/// @param meter     stepped by each object; may be null.
ZDM_API void RebindMerged(IZReltnMapID* map, IZDatabase* database, IZDMObjColl& added,
                          IZDMObjColl& existing, IZProgressMeter* meter);

}  // namespace zdm
