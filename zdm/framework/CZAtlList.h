// A doubly linked list whose nodes come from blocks and go back to them. A position is a node's
// address; it stays valid until its node is removed, also when nodes are moved or swapped.
// A list that becomes empty gives every block back to the heap. Misuse throws CAtlException(E_FAIL)
// and failed allocation CAtlException(E_OUTOFMEMORY); the list is unchanged by a call that throws.
// Releasing an element may run any code, so a node is always unlinked before its element goes.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "platform/ole/CAtlException.h"

#include <utility>

struct __POSITION;
using POSITION = __POSITION*;

/// How elements compare: by identity, not by EqualTo.
template <class E>
struct CDefaultElementTraits {
  static bool CompareElements(const E& left, const E& right) { return left == right; }
};

template <class E, class Traits = CDefaultElementTraits<E>>
class CZAtlList {
  struct CZNode;

 public:
  /// @param blockSize  nodes per block, at least 1.
  explicit CZAtlList(ULONG blockSize = 10) : blockSize_(blockSize) {}
  CZAtlList(const CZAtlList&) = delete;
  CZAtlList& operator=(const CZAtlList&) = delete;
  ~CZAtlList();

  std::size_t GetCount() const { return static_cast<std::size_t>(count_); }
  bool IsEmpty() const { return count_ == 0; }

  POSITION GetHeadPosition() const { return ToPosition(head_); }
  POSITION GetTailPosition() const { return ToPosition(tail_); }
  /// Element at `pos`; moves `pos` to the next (previous) one, 0 past the end.
  E& GetNext(POSITION& pos);
  E& GetPrev(POSITION& pos);
  E& GetAt(POSITION pos) { return ToNode(pos)->element; }
  const E& GetAt(POSITION pos) const { return ToNode(pos)->element; }
  void SetAt(POSITION pos, const E& element);
  /// First and last element; throw for an empty list.
  E& GetHead() { return ToNode(GetHeadPosition())->element; }
  E& GetTail() { return ToNode(GetTailPosition())->element; }

  POSITION AddHead(const E& element) { return ToPosition(NewNode(element, nullptr, head_)); }
  POSITION AddTail(const E& element) { return ToPosition(NewNode(element, tail_, nullptr)); }
  POSITION AddHead() { return AddHead(E()); }
  POSITION AddTail() { return AddTail(E()); }
  /// Without a position InsertBefore adds at the head and InsertAfter at the tail.
  POSITION InsertBefore(POSITION pos, const E& element);
  POSITION InsertAfter(POSITION pos, const E& element);
  /// Adds the other list's elements in their order; a list added to itself changes nothing.
  void AddHeadList(const CZAtlList* other);
  void AddTailList(const CZAtlList* other);

  /// Unlinks the first (last) node and hands out its element.
  E RemoveHead() { return RemoveEnd(head_); }
  E RemoveTail() { return RemoveEnd(tail_); }
  void RemoveHeadNoReturn() { RemoveAt(GetHeadPosition()); }
  void RemoveTailNoReturn() { RemoveAt(GetTailPosition()); }
  void RemoveAt(POSITION pos);
  void RemoveAll();

  /// A walk from head to tail during which the list may change, or end: the element shown stays
  /// until the next one is asked for, also when it is removed; what is removed before its turn is
  /// left out, and what is added behind the tail of the start is not reached.
  class Walk {
   public:
    explicit Walk(CZAtlList& list);
    ~Walk() {
      if (list_ != nullptr) list_->walks_ = outer_;
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    /// Moves on to the next element; null past the tail.
    const E* Next();

   private:
    friend class CZAtlList;
    CZAtlList* list_;          // null when the list has ended
    Walk* outer_;              // begun earlier and still under way
    CZNode* shown_ = nullptr;  // null once its element was taken away
    CZNode* next_;
    CZNode* last_;         // to be shown as the last one
    bool isDone_ = false;  // it was shown, or nothing is left before it
    E kept_ = E();         // the element shown, once it was taken away
  };

  /// First node after `startAfter` (from the head when 0) that holds `element`; 0 if none.
  POSITION Find(const E& element, POSITION startAfter = nullptr) const;
  /// Node number `index` from the head; 0 past the end.
  POSITION FindIndex(ULONGLONG index) const;

  void MoveToHead(POSITION pos);
  void MoveToTail(POSITION pos);
  /// Exchanges the places of two nodes; each position keeps its element.
  void SwapElements(POSITION first, POSITION second);

 protected:
  /// Runs `add`, which only adds at one end; when it throws, takes away again what it added.
  template <class Add>
  void AllOrNothing(Add add);

 private:
  struct CZNode {
    CZNode* next;
    CZNode* prev;
    E element;
  };
  struct Block {
    Block* next;
  };

  static POSITION ToPosition(CZNode* node) { return reinterpret_cast<POSITION>(node); }
  static CZNode* ToNode(POSITION pos) {
    if (pos == nullptr) throw CAtlException(E_FAIL);
    return reinterpret_cast<CZNode*>(pos);
  }

  CZNode* NewNode(const E& element, CZNode* prev, CZNode* next);
  CZNode* GetFreeNode();
  void FreeNode(CZNode* node);
  void FreeBlocks();
  E RemoveEnd(CZNode* node);
  void KeepForWalks(CZNode* node);
  void RemoveNode(CZNode* node);
  void Unlink(CZNode* node);
  void Link(CZNode* node, CZNode* prev, CZNode* next);

  CZNode* head_ = nullptr;
  CZNode* tail_ = nullptr;
  ULONGLONG count_ = 0;
  Block* blocks_ = nullptr;  // the block allocated last; the others behind it
  CZNode* free_ = nullptr;   // unused nodes, linked through next
  ULONG blockSize_;

 protected:
  ULONG watch_ = 0;  // of those who remember the elements; see ChangeWatch.h

 private:
  Walk* walks_ = nullptr;  // the innermost one under way
};

#include "zdm/framework/CZAtlList.inl"
