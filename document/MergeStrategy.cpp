#include "document/MergeStrategy.h"

#include "document/MergePlan.h"
#include "zdm/identity/IZMergeMapTool.h"
#include "zdm/model/IZDMObjColl.h"

void zdm::MergeStrategy::Merge(IZDMObjMgr* source, IZDMObjMgr* target, IZMergeMapTool* tool,
                               IZDMObjColl* added, IZDMObjColl* replaced) {
  const auto choose = [tool](IZDMObject* s, IZDMObject* d) { return tool->GetMergeOption(s, d); };
  for (const MergeStep& step : PlanMerge(source, target, choose)) {
    if (step.decision == MergeDecision::kLeaveOut || step.isBelow) continue;
    if (step.decision == MergeDecision::kAdd) {
      tool->AddItem(step.source, added);
      continue;
    }
    tool->AddMapIDPair(step.source, step.target);
    if (step.decision == MergeDecision::kReplace) {
      replaced->AddTail(CloneAs<IZDMObject>(step.target));
      step.target->CopyFrom(step.source, kCopyMode);
    }
    tool->MeterProgress();
  }
}
