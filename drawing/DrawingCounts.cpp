#include "drawing/DrawingCounts.h"

#include "drawing/CZDMDrawing.h"
#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/DrawingTree.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"
#include "drawing/NestedPaths.h"
#include "drawing/Numbers.h"

#include <algorithm>
#include <limits>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace zdm {

namespace {

constexpr LONG kPaperCode = 67;
constexpr ULONGLONG kMost = std::numeric_limits<ULONGLONG>::max();

ULONGLONG SumOf(ULONGLONG left, ULONGLONG right) {
  return left > kMost - right ? kMost : left + right;
}

/// How deep inserts nest, and how many ways lead through them.
class Nesting {
 public:
  struct Depth {
    ULONGLONG nest = 0;
    ULONGLONG paths = 0;

    void Add(const Depth& block) {
      nest = std::max(nest, SumOf(block.nest, 1));
      paths = SumOf(paths, SumOf(block.paths, 1));
    }
  };

  /// Of an insert's block; nothing for a block that is being looked at, or none.
  Depth Of(IZDMObject& insert) {
    CZDMDrawingBlock* block = BlockOf(insert);
    if (block == nullptr) return {};
    Enter(block);
    while (!levels_.empty()) Step();
    return known_[block];
  }

 private:
  struct Level {
    CZDMDrawingBlock* block;
    std::vector<IZDMObject*> inserts;
    std::size_t next = 0;
    Depth depth = {};
  };

  void Enter(CZDMDrawingBlock* block) {
    if (known_.try_emplace(block).second) levels_.push_back({block, InsertsIn(*block)});
  }

  void Step() {
    Level& level = levels_.back();
    if (level.next == level.inserts.size()) {
      known_[level.block] = level.depth;
      levels_.pop_back();
      return;
    }
    CZDMDrawingBlock* block = BlockOf(*level.inserts[level.next]);
    if (block != nullptr && !known_.contains(block)) return Enter(block);
    level.depth.Add(block != nullptr ? known_[block] : Depth());
    ++level.next;
  }

  std::unordered_map<CZDMDrawingBlock*, Depth> known_;
  std::vector<Level> levels_;
};

enum class Space { kNone, kModel, kPaper, kBlock };

class Counter {
 public:
  explicit Counter(CZDMDrawing& drawing) : drawing_(drawing) {}

  DrawingCounts Run() {
    ForEachPart(drawing_, [this](IZDMObject& object, DrawingPart& part) { Look(object, part); });
    for (IZDMObject* insert : InsertsOfModel(drawing_)) model_.Add(nesting_.Of(*insert));
    counts_.nestModel = model_.nest;
    counts_.pathsModel = model_.paths;
    counts_.nestAny = any_.nest;
    counts_.entTotal = counts_.entModel + counts_.entPaper + counts_.entBlocks;
    counts_.xdataApps = applications_.size();
    return counts_;
  }

 private:
  /// Where the object stands, from the type of what holds it.
  Space SpaceOf(IZDMObject& object, const DrawingPart& part) const {
    const IZDMObject* above = &object;
    for (IZDMObject* at = object.GetOwner(); at != nullptr; at = at->GetOwner()) {
      if (const auto* block = dynamic_cast<CZDMDrawingBlock*>(at)) {
        const std::string_view name = Trimmed(block->Groups().Find(kNameCode));
        if (IsModelSpace(name)) return Space::kModel;
        return IsPaperSpace(name) ? Space::kPaper : Space::kBlock;
      }
      if (at == entities_) {
        const auto paper = ParseLong(part.Groups().Find(kPaperCode));
        return paper == 1 ? Space::kPaper : Space::kModel;
      }
      if (at == above || at == static_cast<IZDMObject*>(&drawing_)) break;
      above = at;
    }
    return Space::kNone;
  }

  void Look(IZDMObject& object, const DrawingPart& part) {
    const std::string_view type = part.Type();
    const bool isVariable = !part.Groups().IsEmpty() && (*part.Groups().begin()).code != kTypeCode;
    if (type.empty() || isVariable) return;
    const DrawingPart* owner = PartOf(object.GetOwner());
    if (type == "LAYER" && owner != nullptr && owner->Type() == "TABLE") ++counts_.layers;
    if (type == "BLOCK") {
      const std::string_view name = Trimmed(part.Groups().Find(kNameCode));
      if (!IsModelSpace(name) && !IsPaperSpace(name)) ++counts_.blocks;
    }
    const Space space = SpaceOf(object, part);
    if (space != Space::kNone) LookAtEntity(object, part, space);
    if (objects_ != nullptr && part.Place() > 0) {
      ++counts_.objects;
      if (IsDictionary(type)) ++counts_.dicts;
      if (type == "XRECORD") ++counts_.xrecords;
    }
    if (const auto handle = ParseHandle(part.Handle());
        handle && !handles_.insert(*handle).second) {
      ++counts_.dupHandles;
    }
    LookAtGroups(part, space != Space::kNone && !IsEntityPart(type));
  }

  void LookAtEntity(IZDMObject& object, const DrawingPart& part, Space space) {
    const std::string_view type = part.Type();
    ++(part.Groups().IndexOf(5) < part.Tail() ? counts_.withHandle : counts_.noHandle);
    if (type == "VERTEX") ++counts_.vertices;
    if (type == "ATTRIB") ++counts_.attribs;
    if (IsEntityPart(type)) return;
    if (type == "ATTDEF") ++counts_.attdefs;
    if (type == "INSERT") {
      ++counts_.insTotal;
      if (space == Space::kModel) ++counts_.insModel;
      any_.Add(nesting_.Of(object));
    }
    ++(space == Space::kModel   ? counts_.entModel
       : space == Space::kPaper ? counts_.entPaper
                                : counts_.entBlocks);
  }

  /// The tail is a record of its own.
  void LookAtGroups(const DrawingPart& part, bool isEntity) {
    ULONG index = 0;
    bool hasData = false;
    for (const Group group : part.Groups()) {
      if (index++ == part.Tail()) hasData = false;
      if (group.code == kBraceCode && Trimmed(group.text) == "{ACAD_XDICTIONARY") {
        ++counts_.xdictLinks;
      }
      if (group.code != kApplicationCode) continue;
      applications_.insert(NameKey(drawing_.GetCodec().Show(group.text)));
      if (!hasData) ++counts_.xdataRecords;
      if (!hasData && isEntity) ++counts_.xdataEntities;
      hasData = true;
    }
  }

  CZDMDrawing& drawing_;
  const IZDMObject* entities_ = drawing_.FindSection("ENTITIES");
  const IZDMObjMgr* objects_ = drawing_.FindSection("OBJECTS");
  DrawingCounts counts_;
  Nesting nesting_;
  Nesting::Depth model_;
  Nesting::Depth any_;
  std::unordered_set<ULONGLONG> handles_;
  std::set<WideString> applications_;
};

}  // namespace

DrawingCounts Count(CZDMDrawing& drawing) { return Counter(drawing).Run(); }

}  // namespace zdm
