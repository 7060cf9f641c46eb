// Bounds on trees of categories and of category relations. Categories name their members by ID, so
// a document may hold rings of them, and members shared so often that the tree has no end.
#pragma once

#include "platform/ole/CAtlException.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm {

constexpr int kMaxCategoryDepth = 256;
constexpr ULONG kMaxCategoryReltns = 1000000;  // of one tree, those included that are left out

/// The way from the root of a tree down to where a walk is. `Tag` keeps kinds of walks apart.
template <class Tag>
class TreeStep {
 public:
  /// Goes down to `node`, below which stands `below` (may be null); see IsTaken. Throws
  /// CAtlException(E_FAIL) when that makes too many.
  TreeStep(const CZObject* node, IZReltnColl* below) {
    if (depth_ == kMaxCategoryDepth || IsOnPath(node)) return;
    if (depth_ == 0 && !isSum_) left_ = kMaxCategoryReltns;
    if (depth_ == 0) Take(1);
    if (below != nullptr) Take(static_cast<ULONG>(below->GetCount()));
    path_[depth_++] = node;
    isTaken_ = true;
  }
  ~TreeStep() {
    if (isTaken_) --depth_;
  }
  TreeStep(const TreeStep&) = delete;
  TreeStep& operator=(const TreeStep&) = delete;

  /// False when the walk is at its full depth or comes from `node`: it is left out.
  bool IsTaken() const { return isTaken_; }
  static bool IsUnderWay() { return depth_ != 0; }

  /// While one lives, all trees that are walked count as one.
  class Sum {
   public:
    Sum() {
      left_ = kMaxCategoryReltns;
      isSum_ = true;
    }
    ~Sum() { isSum_ = false; }
    Sum(const Sum&) = delete;
    Sum& operator=(const Sum&) = delete;
  };

 private:
  static bool IsOnPath(const CZObject* node) {
    for (int i = depth_; i > 0; --i) {
      if (path_[i - 1] == node) return true;
    }
    return false;
  }
  static void Take(ULONG count) {
    if (count > left_) throw CAtlException(E_FAIL);
    left_ -= count;
  }

  static inline const CZObject* path_[kMaxCategoryDepth];
  static inline int depth_ = 0;
  static inline ULONG left_ = 0;
  static inline bool isSum_ = false;

  bool isTaken_ = false;
};

/// The walk that counts a tree before it is made.
struct Counting;

/// True at the first element of `coll`, which may be null, that answers to T and for which
/// `test(T&)` is. What is appended meanwhile is not reached; nothing may be removed.
template <class T, class Test>
bool AnyElement(IZReltnColl* coll, Test test) {
  if (coll == nullptr) return false;
  const LONGLONG last = coll->GetTailPosition();
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    const bool isLast = pos == last;
    T* element = ViewAs<T>(coll->GetNext(pos));
    if (element != nullptr && test(*element)) return true;
    if (isLast) break;
  }
  return false;
}

}  // namespace zdm
