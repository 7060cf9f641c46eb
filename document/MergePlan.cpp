#include "document/MergePlan.h"

#include "document/ClassTable.h"
#include "document/Transfer.h"
#include "platform/core/ZCore.h"
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/host/eZMergeOption.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/parameters/IZDMParameter.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

namespace zdm {

namespace {

/// Classes of the document judge by class and ID.
bool IsOfDocument(IZDMObject* object) { return object->GetZRMID() == DocumentModule::kID; }

using Key = std::string;

Key KeyOf(const GUID& classId, const std::string& rest) {
  return Key(reinterpret_cast<const char*>(&classId), sizeof(classId)) + rest;
}

Key KeyOfManager(IZDMObject* manager) {
  Bstr name;
  manager->GetName(name.Out());
  return KeyOf(manager->GetZRID(), ToUtf8(name.View()));
}

Key KeyOfNumber(ULONG number) { return 'n' + std::to_string(number); }

Key KeyOfDefinition(IZDefinition& definition) {
  GUID guid = GUID_NULL;
  return KeyOf(*definition.GetKey(&guid), {});
}

/// What an object of the library judges by alone; empty for one that has to be asked.
Key KeyOfJudgement(IZDMObject* object) {
  const GUID classId = object->GetZRID();
  if (classId == CZDMCategory::kClassID)
    return KeyOfNumber(ViewAs<IZCategory>(object)->GetNumber());
  if (classId == CZDefinition::kClassID) return KeyOfDefinition(*ViewAs<IZDefinition>(object));
  return {};
}

/// Parameters count as the same by their values, which a merge is to bring together.
bool AreOneParameter(IZDMObject* left, IZDMObject* right) {
  auto* one = ViewAs<IZDMParameter>(left);
  auto* other = ViewAs<IZDMParameter>(right);
  if (one == nullptr || other == nullptr) return false;
  GUID keys[2];
  return *one->GetDefinitionGUID(&keys[0]) == *other->GetDefinitionGUID(&keys[1]);
}

/// The valid objects of a manager, by what makes them counterparts.
class Candidates {
 public:
  explicit Candidates(IZDMObjMgr& manager) {
    for (LONGLONG pos = manager.GetValidHeadPosition(); pos != 0;) {
      IZDMObject* object = manager.GetValidNext(pos);
      byID_.try_emplace(object->GetID(), object);
      if (ViewAs<IZDMObjMgr>(object) != nullptr) {
        managers_.try_emplace(KeyOfManager(object), object);
      } else if (!IsOfDocument(object)) {
        Add({others_++, object});
      }
    }
  }

  IZDMObject* Find(IZDMObject* source) const {
    const auto same = byID_.find(source->GetID());
    IZDMObject* sameID = same != byID_.end() ? same->second : nullptr;
    if (ViewAs<IZDMObjMgr>(source) != nullptr) return FindManager(source, sameID);
    if (sameID != nullptr && (sameID->JudgeSame(source) || AreOneParameter(sameID, source))) {
      return sameID;
    }
    return FindOther(source);
  }

 private:
  struct Place {
    std::size_t index;
    IZDMObject* object;
  };

  void Add(const Place& place) {
    const Key key = KeyOfJudgement(place.object);
    if (key.empty()) {
      asked_.push_back(place);
    } else {
      judging_.try_emplace(key, place);
    }
  }

  /// The first that counts as the same.
  IZDMObject* FindOther(IZDMObject* source) const {
    Place first = {others_, nullptr};
    const auto look = [&](const Key& key) {
      const auto found = judging_.find(key);
      if (found != judging_.end() && found->second.index < first.index) first = found->second;
    };
    if (auto* category = ViewAs<IZCategory>(source)) look(KeyOfNumber(category->GetNumber()));
    if (auto* definition = ViewAs<IZDefinition>(source)) look(KeyOfDefinition(*definition));
    for (const Place& place : asked_) {
      if (place.index > first.index) break;
      if (place.object->JudgeSame(source)) return place.object;
    }
    return first.object;
  }

  IZDMObject* FindManager(IZDMObject* source, IZDMObject* sameID) const {
    const Key key = KeyOfManager(source);
    const bool isOne = sameID != nullptr && ViewAs<IZDMObjMgr>(sameID) != nullptr;
    if (isOne && KeyOfManager(sameID) == key) return sameID;
    const auto found = managers_.find(key);
    return found != managers_.end() ? found->second : nullptr;
  }

  std::map<ULONG, IZDMObject*> byID_;
  std::map<Key, IZDMObject*> managers_;  // the first of each class and name
  std::size_t others_ = 0;               // so many of the next two, in the order of the list
  std::map<Key, Place> judging_;         // the first of each key
  std::vector<Place> asked_;             // one by one
};

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
    std::shared_ptr<const Candidates> candidates;  // null below what is copied or left out
    MergeDecision fate;                            // of what is there
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
                       std::make_shared<const Candidates>(*target), MergeDecision::kDescend});
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
