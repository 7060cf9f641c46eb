// How the embedded document merges two managers where the library asks for a strategy: by PlanMerge
// with the options of the tool, so that large managers take no search per object. An object whose
// class is not available is not copied.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/host/IZMergeStrategy.h"

namespace zdm {

class MergeStrategy : public IZObjectImpl<IZMergeStrategy> {
 public:
  void Merge(IZDMObjMgr* source, IZDMObjMgr* target, IZMergeMapTool* tool, IZDMObjColl* added,
             IZDMObjColl* replaced) override;
};

}  // namespace zdm
