#include "drawing/NestedPaths.h"

#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/EntityValues.h"
#include "drawing/Numbers.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

#include <unordered_map>
#include <unordered_set>

namespace zdm {

namespace {

constexpr LONG kPaperCode = 67;

class PathPool {
 public:
  PathPool(CPIDManager& paths, Warnings* warnings) : paths_(paths), warnings_(warnings) {}

  void Pool(const std::vector<IZDMObject*>& inserts) {
    levels_.push_back({nullptr, &inserts, 0});
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.next == level.inserts->size()) {
        Leave();
      } else if (!Take((*level.inserts)[level.next++])) {
        return;
      }
    }
  }

 private:
  struct Level {
    CZDMDrawingBlock* block;  // null for model space
    const std::vector<IZDMObject*>* inserts;
    std::size_t next;
  };

  void Leave() {
    open_.erase(levels_.back().block);
    levels_.pop_back();
    if (!records_.empty()) records_.pop_back();
  }

  /// False when there are too many.
  bool Take(IZDMObject* insert) {
    records_.push_back(insert->GetOID());
    steps_ += records_.size();
    if (steps_ > kMostSteps) {
      warnings_->Add(WarningCode::kTooManyPaths, 0);
      return false;
    }
    paths_.QueryPID(records_);
    CZDMDrawingBlock* block = BlockOf(*insert);
    if (block == nullptr) {
      records_.pop_back();
    } else if (!open_.insert(block).second) {
      warnings_->Add(WarningCode::kBlockCycle, 0, block->Groups().Find(2));
      records_.pop_back();
    } else {
      levels_.push_back({block, &InsertsOf(*block), 0});
    }
    return true;
  }

  const std::vector<IZDMObject*>& InsertsOf(CZDMDrawingBlock& block) {
    const auto [found, isNew] = inserts_.try_emplace(&block);
    if (isNew) found->second = InsertsIn(block);
    return found->second;
  }

  CPIDManager& paths_;
  Warnings* warnings_;
  std::vector<Level> levels_;
  std::vector<OID*> records_;
  std::unordered_set<CZDMDrawingBlock*> open_;
  std::unordered_map<CZDMDrawingBlock*, std::vector<IZDMObject*>> inserts_;
  std::size_t steps_ = 0;
};

}  // namespace

std::vector<IZDMObject*> InsertsIn(IZDMObjMgr& manager) {
  std::vector<IZDMObject*> inserts;
  for (LONGLONG pos = manager.GetValidHeadPosition(); pos != 0;) {
    IZDMObject* object = manager.GetValidNext(pos);
    if (dynamic_cast<CZDMDrawingInsert*>(object) != nullptr) inserts.push_back(object);
  }
  return inserts;
}

std::vector<IZDMObject*> InsertsOfModel(CZDMDrawing& drawing) {
  IZDMObjMgr* entities = drawing.FindSection("ENTITIES");
  if (entities == nullptr) return {};
  std::vector<IZDMObject*> inserts = InsertsIn(*entities);
  std::erase_if(inserts, [](IZDMObject* insert) {
    return ParseLong(PartOf(insert)->Groups().Find(kPaperCode)) == 1;
  });
  return inserts;
}

void PoolPaths(CZDMDrawing& drawing, CPIDManager& paths, Warnings* warnings) {
  const std::vector<IZDMObject*> inserts = InsertsOfModel(drawing);
  PathPool(paths, warnings).Pool(inserts);
}

}  // namespace zdm
