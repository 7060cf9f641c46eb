#include "document/Copy.h"

#include "document/CZDocument.h"
#include "document/Meaning.h"
#include "zdm/categories/CategoryTree.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/ZDfValues.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zdm {

namespace {

using Objects = std::vector<IZDMObject*>;

/// Calls `visit` for what is valid below the manager `top`, managers before their objects, in list
/// order; what is in `met` is left out with all below it.
template <class Visit>
void ForEachBelow(IZDMObjMgr* top, PointerSet& met, Visit visit) {
  struct Level {
    IZDMObjMgr* manager;
    LONGLONG next;
  };
  std::vector<Level> levels = {{top, top->GetValidHeadPosition()}};
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZDMObject* child = level.manager->GetValidNext(level.next);
    if (!met.Insert(child).second) continue;
    visit(child);
    if (auto* nested = ViewAs<IZDMObjMgr>(child)) {
      levels.push_back({nested, nested->GetValidHeadPosition()});
    }
  }
}

class Copier {
 public:
  Copier(CZDocument& source, CZDocument& target, IZDMObjMgr* manager)
      : source_(source),
        target_(target),
        isInside_(&source == &target),
        manager_(manager != nullptr ? manager : &target),
        meanings_(isInside_ ? std::nullopt : std::make_optional<Meanings>(target)),
        transfer_(target, isInside_ ? Transfer::Outside::kStays : Transfer::Outside::kCut,
                  meanings_.has_value() ? &*meanings_ : nullptr) {
    if (!isInside_) transfer_.LeadTo(source.GetOID(), target.GetOID(), ReferenceFate::kCounterpart);
  }

  Copies Run(const Objects& objects) {
    met_.Reserve(objects.size());
    transfer_.Reserve(objects.size());
    copies_.objects.reserve(objects.size());
    const PointerSet below = FindBelow(objects);
    for (IZDMObject* object : objects) {
      if (object != nullptr && !below.Contains(object)) Take(object);
    }
    for (IZDMObject* object : objects) {  // managers that are below each other
      if (object != nullptr && below.Contains(object)) Take(object);
    }
    if (!isInside_) TakeDefinitions();
    if (copies_.objects.empty()) return std::move(copies_);
    const Objects made = transfer_.CarryOut(&copies_.leadingOut);
    for (std::size_t i = 0; i < made.size(); ++i) copies_.objects[i].copy = made[i];
    if (!isInside_) TakeIndexNames();
    return std::move(copies_);
  }

 private:
  /// What the managers of the set bring along.
  PointerSet FindBelow(const Objects& objects) const {
    PointerSet below;
    for (IZDMObject* object : objects) {
      if (auto* manager = ViewAs<IZDMObjMgr>(object); manager != nullptr && IsWithin(object)) {
        ForEachBelow(manager, below, [](IZDMObject*) {});
      }
    }
    return below;
  }

  /// Once, with all that is below it.
  void Take(IZDMObject* object) {
    if (!met_.Insert(object).second) return;
    Judge(object);
    if (auto* manager = ViewAs<IZDMObjMgr>(object); manager != nullptr && IsWithin(object)) {
      ForEachBelow(manager, met_, [this](IZDMObject* child) { Judge(child); });
    }
  }

  void Judge(IZDMObject* object) {
    const std::optional<CopyObstacle> obstacle = ObstacleOf(object);
    if (obstacle.has_value()) {
      copies_.leftOut.push_back({object, *obstacle});
    } else {
      Add(object, isInside_ ? ViewAs<IZDMObjMgr>(object->GetOwner()) : manager_);
    }
  }

  void Add(IZDMObject* object, IZDMObjMgr* fallback) {
    transfer_.Copy(object, fallback);
    copies_.objects.push_back({object, nullptr});
  }

  bool IsWithin(IZDMObject* object) const {
    return IsListedIn(source_, object) && object != &source_;
  }

  std::optional<CopyObstacle> ObstacleOf(IZDMObject* object) const {
    if (object == &source_) return CopyObstacle::kDocument;
    if (!IsListedIn(source_, object)) return CopyObstacle::kNotInDocument;
    if (!IsAlive(object->GetOID())) return CopyObstacle::kNotValid;
    if (ViewAs<IZDMObjMgr>(object->GetOwner()) == nullptr) return CopyObstacle::kNoOwner;
    if (!IsCopyable(object)) return CopyObstacle::kNotAvailable;
    return std::nullopt;
  }

  // A parameter is nothing without its definition.

  /// Definitions that the target lacks, and those of their own parameters.
  void TakeDefinitions() {
    for (std::size_t i = 0; i < copies_.objects.size(); ++i) {
      TakeDefinitionsOf(copies_.objects[i].original, 0);
    }
  }

  void TakeDefinitionsOf(IZDMObject* object, int depth) {
    if (object == nullptr || depth == kMaxCategoryDepth) return;
    const auto take = [&](IZParameter& parameter) {
      TakeDefinition(ViewAs<IZDMObject>(parameter.GetDefinition()));
      ZDfValue* value = parameter.GetValue();
      if (value == nullptr || value->GetType() != ZDfElement::kType) return;
      TakeDefinitionsOf(static_cast<ZDfElement*>(value)->Value, depth + 1);
    };
    if (auto* parameter = ViewAs<IZParameter>(object)) take(*parameter);
    IZParameterArray* parameters = object->PeekParameterArray();
    const LONG count = parameters != nullptr ? parameters->GetCount() : 0;
    for (LONG i = 0; i < count; ++i) take(*parameters->GetAt(i));
  }

  void TakeDefinition(IZDMObject* definition) {
    if (definition == nullptr || transfer_.IsLed(definition->GetOID())) return;
    if (ObstacleOf(definition).has_value()) return;
    IZDMObject* owner = definition->GetOwner();
    IZDMObjMgr* manager = manager_;
    if (ViewAs<IZDefinitionMgr>(owner) != nullptr && !transfer_.IsLed(owner->GetOID())) {
      IZDMObject* there = target_.FindByInterface(ZInterface<IZDefinitionMgr>::ID());
      if (there != nullptr) {
        manager = ViewAs<IZDMObjMgr>(there);
      } else if (!ObstacleOf(owner).has_value()) {
        Add(owner, &target_);
      }
    }
    Add(definition, manager);
  }

  /// A manager of definitions knows the display names of their indexes.
  void TakeIndexNames() const {
    for (const auto& [original, copy] : copies_.objects) {
      auto* definition = ViewAs<IZDefinition>(original);
      auto* from = ViewAs<IZDefinitionMgr>(original->GetOwner());
      auto* to = ViewAs<IZDefinitionMgr>(copy->GetOwner());
      if (definition == nullptr || from == nullptr || to == nullptr) continue;
      const auto name = from->GetNameTable()->find(definition->GetIndex());
      if (name == from->GetNameTable()->end() || to->GetNameTable()->contains(name->first))
        continue;
      to->RegisterName(name->first, name->second->name.Get());
    }
  }

  CZDocument& source_;
  CZDocument& target_;
  const bool isInside_;
  IZDMObjMgr* const manager_;
  const std::optional<Meanings> meanings_;  // of another document
  Transfer transfer_;
  PointerSet met_;
  Copies copies_;
};

Copies RefusedWith(Refusal refusal) {
  Copies copies;
  copies.refusal = refusal;
  return copies;
}

}  // namespace

Copies Copy(CZDocument& document, const std::vector<IZDMObject*>& objects) {
  if (document.IsClosing()) return RefusedWith(Refusal::kClosing);
  return Copier(document, document, nullptr).Run(objects);
}

Copies CopyTo(CZDocument& source, const std::vector<IZDMObject*>& objects, CZDocument& target,
              IZDMObjMgr* manager) {
  const Refusal refusal = JudgeDocuments(source, target);
  if (refusal != Refusal::kNone) return RefusedWith(refusal);
  if (manager != nullptr && !IsListedIn(target, manager)) {
    return RefusedWith(Refusal::kNotInTarget);
  }
  return Copier(source, target, manager).Run(objects);
}

}  // namespace zdm
