#include "document/MergePlan.h"

#include "document/MergeCandidates.h"
#include "document/Transfer.h"
#include "zdm/host/eZMergeOption.h"

#include <memory>
#include <unordered_set>
#include <utility>

namespace zdm {

namespace {

class Planner {
 public:
  explicit Planner(const MergeChooser& choose) : choose_(choose) {}

  std::vector<MergeStep> Plan(IZDMObjMgr* source, IZDMObjMgr* target) {
    Descend(source, target);
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.next == 0) {
        levels_.pop_back();
        continue;
      }
      IZDMObject* object = level.source->GetValidNext(level.next);
      if (met_.insert(object).second) Decide(object, level);
    }
    return std::move(steps_);
  }

 private:
  struct Level {
    IZDMObjMgr* source;
    LONGLONG next;
    std::shared_ptr<const MergeCandidates> candidates;  // null below what is copied or left out
    MergeDecision fate;                                 // of what is there
  };

  void Decide(IZDMObject* object, const Level& level) {
    auto* manager = ViewAs<IZDMObjMgr>(object);
    if (level.candidates == nullptr) {
      return Enter(object, manager, IsCopyable(object) ? level.fate : MergeDecision::kLeaveOut,
                   true);
    }
    IZDMObject* counterpart = level.candidates->Find(object);
    const MergeDecision decision = DecisionFor(object, manager, counterpart);
    if (decision == MergeDecision::kAdd || decision == MergeDecision::kLeaveOut) {
      return Enter(object, manager, decision, false);
    }
    steps_.push_back({object, counterpart, decision, false});
    if (decision == MergeDecision::kDescend) {
      Descend(manager, ViewAs<IZDMObjMgr>(counterpart));
    } else {
      EnterBelow(manager, MergeDecision::kLeaveOut);
    }
  }

  MergeDecision DecisionFor(IZDMObject* object, IZDMObjMgr* manager, IZDMObject* counterpart) {
    const BYTE option =
        counterpart != nullptr ? choose_(object, counterpart) : static_cast<BYTE>(ZMO_ADD);
    if (option == ZMO_SAME) return MergeDecision::kSame;
    if (option == ZMO_MERGE && manager != nullptr && ViewAs<IZDMObjMgr>(counterpart) != nullptr) {
      return MergeDecision::kDescend;
    }
    if (!IsCopyable(object)) {
      return counterpart != nullptr ? MergeDecision::kSame : MergeDecision::kLeaveOut;
    }
    if (option == ZMO_REPLACE && manager == nullptr) return MergeDecision::kReplace;
    return option == ZMO_ADD ? MergeDecision::kAdd : MergeDecision::kLeaveOut;
  }

  void Enter(IZDMObject* object, IZDMObjMgr* manager, MergeDecision decision, bool isBelow) {
    steps_.push_back({object, nullptr, decision, isBelow});
    EnterBelow(manager, decision);
  }

  void EnterBelow(IZDMObjMgr* manager, MergeDecision fate) {
    if (manager == nullptr) return;
    levels_.push_back({manager, manager->GetValidHeadPosition(), nullptr, fate});
  }

  void Descend(IZDMObjMgr* source, IZDMObjMgr* target) {
    levels_.push_back({source, source->GetValidHeadPosition(),
                       std::make_shared<const MergeCandidates>(*target), MergeDecision::kDescend});
  }

  const MergeChooser& choose_;
  std::vector<MergeStep> steps_;
  std::vector<Level> levels_;
  std::unordered_set<const IZDMObject*> met_;
};

}  // namespace

std::vector<MergeStep> PlanMerge(IZDMObjMgr* source, IZDMObjMgr* target,
                                 const MergeChooser& choose) {
  return Planner(choose).Plan(source, target);
}

}  // namespace zdm
