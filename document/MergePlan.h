// What a merge does with each object of a manager and of the managers in it. Counterparts are found
// as IZDMObjMgr::FindObject finds them, but without a search (MergeCandidates.h). In two ways they
// differ: of several managers of one class and name, and of several objects that count as the same,
// the one of the same ID is preferred; and parameters of one ID and definition are counterparts
// whatever their values.
#pragma once

#include "document/MergeDecision.h"
#include "zdm/model/IZDMObjMgr.h"

#include <functional>
#include <vector>

namespace zdm {

struct MergeStep {
  IZDMObject* source;
  IZDMObject* target;  // the counterpart; null without one
  MergeDecision decision;
  bool isBelow;  // it is copied, or left out, with a manager above it
};

/// Answers an eZMergeOption for two counterparts.
using MergeChooser = std::function<BYTE(IZDMObject* source, IZDMObject* target)>;

/// For every valid object of `source` and below it: managers before their objects, in list order.
std::vector<MergeStep> PlanMerge(IZDMObjMgr* source, IZDMObjMgr* target,
                                 const MergeChooser& choose);

}  // namespace zdm
