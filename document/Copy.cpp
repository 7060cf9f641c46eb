#include "document/Copy.h"

#include "document/CZDocument.h"
#include "document/Meaning.h"
#include "zdm/identity/OID.h"

#include <optional>
#include <unordered_set>
#include <utility>

namespace zdm {

namespace {

using Objects = std::vector<IZDMObject*>;
using ObjectSet = std::unordered_set<IZDMObject*>;

/// Appends to `out` what is valid below the manager `top`, managers before their objects, in list
/// order; what is in `met` is left out with all below it.
void AppendBelow(IZDMObjMgr* top, ObjectSet& met, Objects& out) {
  struct Level {
    IZDMObjMgr* manager;
    LONGLONG next;
  };
  std::vector<Level> levels;
  if (top != nullptr) levels.push_back({top, top->GetValidHeadPosition()});
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZDMObject* child = level.manager->GetValidNext(level.next);
    if (!met.insert(child).second) continue;
    out.push_back(child);
    if (auto* nested = ViewAs<IZDMObjMgr>(child)) {
      levels.push_back({nested, nested->GetValidHeadPosition()});
    }
  }
}

class Copier {
 public:
  Copier(CZDocument& source, CZDocument& target, IZDMObjMgr* manager)
      : source_(source),
        isInside_(&source == &target),
        manager_(manager != nullptr ? manager : &target),
        meanings_(isInside_ ? std::nullopt : std::make_optional<Meanings>(target)),
        transfer_(target, isInside_ ? Transfer::Outside::kStays : Transfer::Outside::kCut,
                  meanings_.has_value() ? &*meanings_ : nullptr) {
    if (!isInside_) transfer_.LeadTo(source.GetOID(), target.GetOID(), ReferenceFate::kCounterpart);
  }

  Copies Run(const Objects& objects) {
    for (IZDMObject* object : SetOf(objects)) {
      const std::optional<CopyObstacle> obstacle = ObstacleOf(object);
      if (obstacle.has_value()) {
        copies_.leftOut.push_back({object, *obstacle});
      } else {
        transfer_.Copy(object, isInside_ ? ViewAs<IZDMObjMgr>(object->GetOwner()) : manager_);
        copies_.objects.push_back({object, nullptr});
      }
    }
    if (copies_.objects.empty()) return std::move(copies_);
    copies_.leadingOut = transfer_.FindLeadingOut();
    const Objects made = transfer_.CarryOut();
    for (std::size_t i = 0; i < made.size(); ++i) copies_.objects[i].copy = made[i];
    return std::move(copies_);
  }

 private:
  /// Each object once; those below a manager of the set where the manager stands.
  Objects SetOf(const Objects& objects) const {
    Objects all;
    ObjectSet below;
    for (IZDMObject* object : objects) {
      if (IsWithin(object)) AppendBelow(ViewAs<IZDMObjMgr>(object), below, all);
    }
    all.clear();
    ObjectSet met;
    const auto append = [&](IZDMObject* object) {
      if (!met.insert(object).second) return;
      all.push_back(object);
      if (IsWithin(object)) AppendBelow(ViewAs<IZDMObjMgr>(object), met, all);
    };
    for (IZDMObject* object : objects) {
      if (object != nullptr && !below.contains(object)) append(object);
    }
    for (IZDMObject* object : objects) {  // managers that are below each other
      if (object != nullptr) append(object);
    }
    return all;
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

  CZDocument& source_;
  const bool isInside_;
  IZDMObjMgr* const manager_;
  const std::optional<Meanings> meanings_;  // of another document
  Transfer transfer_;
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
