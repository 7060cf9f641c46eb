// Walks over the objects of a drawing.
#pragma once

#include "drawing/DrawingPart.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/model/IZDMObjMgr.h"

#include <vector>

namespace zdm {

/// `root` and every object of a drawing below it, each before what it holds, in list order. Levels
/// are a vector and not calls; what the walk changes must not be the lists.
template <class Visit>
void ForEachPart(IZDMObject& root, const Visit& visit) {
  struct Level {
    IZDMObjMgr* manager;
    LONGLONG next;
  };
  constexpr std::size_t kDeepest = 256;
  std::vector<Level> levels;
  const auto enter = [&](IZDMObject& object) {
    DrawingPart* part = PartOf(&object);
    if (part == nullptr) return;
    visit(object, *part);
    auto* manager = ViewAs<IZDMObjMgr>(&object);
    if (manager != nullptr && levels.size() < kDeepest) {
      levels.push_back({manager, manager->GetHeadPosition()});
    }
  };
  enter(root);
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    IZDMObject* object = level.manager->GetNext(level.next);
    if (object != nullptr && object->IsObjectValid()) enter(*object);
  }
}

}  // namespace zdm
