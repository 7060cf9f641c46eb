// Deleting objects with a look at who refers to them first. The rules are those of
// COIDManager::JudgeDelete, asked for the whole set at once as if each object were the last of it:
// references from inside the set are not in the way.
#pragma once

#include "document/References.h"
#include "zdm/model/IZDMObjMgr.h"

#include <vector>

namespace zdm {

enum class DeletionObstacle {
  kHardID,    // objects with a hard ID belong to the document
  kCurrent,   // the current object of its manager
  kReferred,  // a valid object refers to it through a diffusible relation
};

struct Obstacle {
  IZDMObject* object;
  DeletionObstacle why;
  IZDMObject* by;  // the manager, or who refers to it; null for kHardID
};

struct Deletion {
  std::vector<IZDMObject*> objects;  // all that go, in the order of the ID table
  std::vector<Obstacle> obstacles;   // by object, in that order
  std::vector<Reference> dangling;   // of objects that stay; they will refer to nothing
  std::vector<IZDMObjMgr*> losing;   // managers that stay and will have no current object
};

/// What deleting `objects` (of `document`, null ones passed over) would do; changes nothing.
/// Managers bring everything below them. One walk over the document.
Deletion PlanDeletion(CZDocument& document, const std::vector<IZDMObject*>& objects);

/// Deletes the objects of a plan without obstacles; of one with obstacles nothing. The pointers to
/// its objects are not to be used afterwards. The records stay, so that references keep the IDs.
void CarryOut(CZDocument& document, const Deletion& plan);

}  // namespace zdm
