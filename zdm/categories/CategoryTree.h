// Bounds on trees of categories and of category relations. Categories name their members by ID, so
// a document may hold rings of them, and members shared so often that the tree has no end.
#pragma once

#include "platform/ole/CAtlException.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm {

constexpr int kMaxCategoryDepth = 256;
constexpr ULONG kMaxCategoryReltns = 1000000;  // of one tree

/// The way from the root of a tree down to where a walk is. `Tag` keeps kinds of walks apart.
template <class Tag>
class TreeStep {
 public:
  /// Goes down to `node`; see IsTaken. Throws CAtlException(E_FAIL) at the one that is too many.
  explicit TreeStep(const CZObject* node) {
    if (depth_ == 0) count_ = 0;
    if (depth_ == kMaxCategoryDepth || IsOnPath(node)) return;
    if (++count_ > kMaxCategoryReltns) throw CAtlException(E_FAIL);
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

 private:
  static bool IsOnPath(const CZObject* node) {
    for (int i = depth_; i > 0; --i) {
      if (path_[i - 1] == node) return true;
    }
    return false;
  }

  static inline const CZObject* path_[kMaxCategoryDepth];
  static inline int depth_ = 0;
  static inline ULONG count_ = 0;

  bool isTaken_ = false;
};

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
