// What managers do to the managers inside them, without recursion.
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/model/ObjectList.h"

#include <algorithm>
#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using zdm::ObjectList;

/// Calls `visit(manager, pos, object, isManager)` for every object of `root` in list order. Where
/// it answers true for a manager that was not entered yet, the objects of that one come next.
template <class Visit>
void WalkTree(IZDMObjMgr& root, Visit visit) {
  struct Level {
    ZRefPtr<IZDMObjMgr> manager;
    LONGLONG next;
  };
  std::vector<Level> levels;
  std::unordered_set<const IZDMObjMgr*> entered;
  const auto enter = [&](IZDMObjMgr* manager) {
    if (entered.insert(manager).second) levels.push_back({manager, manager->GetHeadPosition()});
  };
  for (enter(&root); !levels.empty();) {
    Level& level = levels.back();
    if (level.next == 0) {
      levels.pop_back();
      continue;
    }
    const LONGLONG pos = level.next;
    IZDMObject* object = level.manager->GetNext(level.next);
    if (object == nullptr) continue;
    auto* nested = zdm::ViewAs<IZDMObjMgr>(object);
    if (visit(*level.manager, pos, *object, nested != nullptr) && nested != nullptr) enter(nested);
  }
}

}  // namespace

void zdm::RemoveStatusObjects(IZDMObjMgr& manager, LONG bit) {
  // Released after the walk: what ends may look at the managers, or take more out of them.
  std::vector<ZRefPtr<IZDMObject>> removed;
  WalkTree(manager, [&](IZDMObjMgr& owner, LONGLONG pos, IZDMObject& object, bool isManager) {
    if (!isManager && object.JudgeStatus(bit)) {
      removed.emplace_back(&object);
      owner.RemoveAt(pos);
    }
    return isManager;
  });
}

void zdm::ClearStatusTree(IZDMObjMgr& manager, LONG filterBit, LONG bit) {
  WalkTree(manager, [&](IZDMObjMgr&, LONGLONG, IZDMObject& object, bool) {
    if (filterBit != 0 && !object.JudgeStatus(filterBit)) return false;
    object.ClearStatus(bit);
    return true;
  });
}

// Ending.

namespace {

constexpr int kMaxDepth = 200;  // managers ending inside each other's end

int depth = 0;
std::vector<ZRefPtr<IZDMObject>> waiting;  // what the deepest of them had to release

/// Moves the list's references to `waiting`. False, with the list as it was, without memory.
bool Postpone(ObjectList& objects) {
  try {
    const std::size_t needed = waiting.size() + objects.GetCount();
    if (needed > waiting.capacity()) waiting.reserve(std::max(needed, 2 * waiting.capacity()));
  } catch (const std::bad_alloc&) {
    return false;
  }
  while (!objects.IsEmpty()) waiting.push_back(objects.RemoveTail());
  return true;
}

}  // namespace

void zdm::ReleaseOwned(ObjectList& objects, const OID* owner) {
  for (POSITION pos = objects.GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = objects.GetNext(pos).Get();
    if (object != nullptr && object->GetOwnerOID() == owner) object->SetOwnerOID(nullptr);
  }
  if (depth == kMaxDepth && Postpone(objects)) return;
  ++depth;
  objects.RemoveAll();
  if (depth == 1) {
    while (!waiting.empty()) {
      const ZRefPtr<IZDMObject> last = std::move(waiting.back());
      waiting.pop_back();
    }
  }
  --depth;
}
