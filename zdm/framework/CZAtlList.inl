#pragma once

#include <cassert>
#include <cstdlib>
#include <limits>
#include <new>

template <class E, class Traits>
CZAtlList<E, Traits>::~CZAtlList() {
  RemoveAll();
  for (Walk* walk = walks_; walk != nullptr; walk = walk->outer_) walk->list_ = nullptr;
}

// Not inline, or GCC takes it for a local whose address outlives it.
template <class E, class Traits>
[[gnu::noinline]] CZAtlList<E, Traits>::Walk::Walk(CZAtlList& list)
    : list_(&list), outer_(list.walks_), next_(list.head_), last_(list.tail_) {
  list.walks_ = this;
}

template <class E, class Traits>
const E* CZAtlList<E, Traits>::Walk::Next() {
  kept_ = E();
  shown_ = isDone_ ? nullptr : next_;
  if (shown_ == nullptr) return nullptr;
  isDone_ = shown_ == last_;
  next_ = shown_->next;
  return &shown_->element;
}

/// Before the element of `node` goes.
template <class E, class Traits>
void CZAtlList<E, Traits>::KeepForWalks(CZNode* node) {
  for (Walk* walk = walks_; walk != nullptr; walk = walk->outer_) {
    if (walk->shown_ != node) continue;
    walk->shown_ = nullptr;
    walk->kept_ = node->element;
  }
}

template <class E, class Traits>
void CZAtlList<E, Traits>::SetAt(POSITION pos, const E& element) {
  CZNode* node = ToNode(pos);
  KeepForWalks(node);
  node->element = element;
  zdm::ChangeWatch::Changed(watch_);
}

template <class E, class Traits>
E& CZAtlList<E, Traits>::GetNext(POSITION& pos) {
  CZNode* node = ToNode(pos);
  pos = ToPosition(node->next);
  return node->element;
}

template <class E, class Traits>
E& CZAtlList<E, Traits>::GetPrev(POSITION& pos) {
  CZNode* node = ToNode(pos);
  pos = ToPosition(node->prev);
  return node->element;
}

template <class E, class Traits>
POSITION CZAtlList<E, Traits>::InsertBefore(POSITION pos, const E& element) {
  if (pos == nullptr) return AddHead(element);
  CZNode* node = ToNode(pos);
  return ToPosition(NewNode(element, node->prev, node));
}

template <class E, class Traits>
POSITION CZAtlList<E, Traits>::InsertAfter(POSITION pos, const E& element) {
  if (pos == nullptr) return AddTail(element);
  CZNode* node = ToNode(pos);
  return ToPosition(NewNode(element, node, node->next));
}

template <class E, class Traits>
void CZAtlList<E, Traits>::AddHeadList(const CZAtlList* other) {
  if (other == nullptr) throw CAtlException(E_FAIL);
  if (other == this) return;
  AllOrNothing([&] {
    for (CZNode* node = other->tail_; node != nullptr; node = node->prev) AddHead(node->element);
  });
}

template <class E, class Traits>
void CZAtlList<E, Traits>::AddTailList(const CZAtlList* other) {
  if (other == nullptr) throw CAtlException(E_FAIL);
  if (other == this) return;
  AllOrNothing([&] {
    for (CZNode* node = other->head_; node != nullptr; node = node->next) AddTail(node->element);
  });
}

template <class E, class Traits>
template <class Add>
void CZAtlList<E, Traits>::AllOrNothing(Add add) {
  const CZNode* const head = head_;
  const CZNode* const tail = tail_;
  try {
    add();
  } catch (...) {
    while (head_ != head) RemoveNode(head_);
    while (tail_ != tail) RemoveNode(tail_);
    throw;
  }
}

template <class E, class Traits>
E CZAtlList<E, Traits>::RemoveEnd(CZNode* node) {
  if (node == nullptr) throw CAtlException(E_FAIL);
  E element = node->element;
  RemoveNode(node);
  return element;
}

template <class E, class Traits>
void CZAtlList<E, Traits>::RemoveAt(POSITION pos) {
  RemoveNode(ToNode(pos));
}

template <class E, class Traits>
void CZAtlList<E, Traits>::RemoveNode(CZNode* node) {
  KeepForWalks(node);
  for (Walk* walk = walks_; walk != nullptr; walk = walk->outer_) {
    if (walk->last_ == node) {
      if (walk->next_ == node) walk->isDone_ = true;
      walk->last_ = node->prev;
    }
    if (walk->next_ == node) walk->next_ = node->next;
  }
  Unlink(node);
  zdm::ChangeWatch::Changed(watch_);
  FreeNode(node);
}

template <class E, class Traits>
void CZAtlList<E, Traits>::RemoveAll() {
  while (head_ != nullptr) RemoveNode(head_);
}

template <class E, class Traits>
POSITION CZAtlList<E, Traits>::Find(const E& element, POSITION startAfter) const {
  CZNode* node = startAfter != nullptr ? ToNode(startAfter)->next : head_;
  while (node != nullptr && !Traits::CompareElements(node->element, element)) node = node->next;
  return ToPosition(node);
}

template <class E, class Traits>
POSITION CZAtlList<E, Traits>::FindIndex(ULONGLONG index) const {
  if (index >= count_) return nullptr;
  CZNode* node = head_;
  while (index-- > 0) node = node->next;
  return ToPosition(node);
}

template <class E, class Traits>
void CZAtlList<E, Traits>::MoveToHead(POSITION pos) {
  CZNode* node = ToNode(pos);
  if (node == head_) return;
  if (node->prev == nullptr) throw CAtlException(E_FAIL);  // not a node of this list
  Unlink(node);
  Link(node, nullptr, head_);
}

template <class E, class Traits>
void CZAtlList<E, Traits>::MoveToTail(POSITION pos) {
  CZNode* node = ToNode(pos);
  if (node == tail_) return;
  if (node->prev == nullptr && node != head_) throw CAtlException(E_FAIL);  // not of this list
  Unlink(node);
  Link(node, tail_, nullptr);
}

template <class E, class Traits>
void CZAtlList<E, Traits>::SwapElements(POSITION first, POSITION second) {
  if (first == second) return;
  CZNode* a = ToNode(first);
  CZNode* b = ToNode(second);
  if (b->next == a) std::swap(a, b);
  if (a->next == b) {
    Unlink(a);
    Link(a, b, b->next);
    return;
  }
  CZNode* const beforeA = a->prev;
  CZNode* const afterA = a->next;
  Unlink(a);
  Link(a, b->prev, b);
  Unlink(b);
  Link(b, beforeA, afterA);
}

template <class E, class Traits>
typename CZAtlList<E, Traits>::CZNode* CZAtlList<E, Traits>::NewNode(const E& element, CZNode* prev,
                                                                     CZNode* next) {
  CZNode* node = GetFreeNode();
  CZNode* const rest = node->next;
  new (&node->element) E(element);
  free_ = rest;
  Link(node, prev, next);
  zdm::ChangeWatch::Changed(watch_);
  ++count_;
  return node;
}

/// The first unused node, still in the chain of unused ones.
template <class E, class Traits>
typename CZAtlList<E, Traits>::CZNode* CZAtlList<E, Traits>::GetFreeNode() {
  if (free_ != nullptr) return free_;
  constexpr std::size_t kHeader = (sizeof(Block) + alignof(CZNode) - 1) & ~(alignof(CZNode) - 1);
  assert(blockSize_ >= 1);
  if (blockSize_ > (std::numeric_limits<std::size_t>::max() - kHeader) / sizeof(CZNode)) {
    throw CAtlException(E_OUTOFMEMORY);
  }
  auto* block = static_cast<Block*>(std::malloc(kHeader + blockSize_ * sizeof(CZNode)));
  if (block == nullptr) throw CAtlException(E_OUTOFMEMORY);
  block->next = blocks_;
  blocks_ = block;
  auto* nodes = reinterpret_cast<CZNode*>(reinterpret_cast<char*>(block) + kHeader);
  for (ULONG i = blockSize_; i > 0; --i) {
    nodes[i - 1].next = free_;
    free_ = &nodes[i - 1];
  }
  return free_;
}

template <class E, class Traits>
void CZAtlList<E, Traits>::FreeNode(CZNode* node) {
  // The element goes last: its release may come back to this list, which is whole again by then.
  const E element = std::move(node->element);
  node->element.~E();
  node->next = free_;
  free_ = node;
  if (--count_ == 0) FreeBlocks();
}

template <class E, class Traits>
void CZAtlList<E, Traits>::FreeBlocks() {
  head_ = tail_ = free_ = nullptr;
  while (blocks_ != nullptr) std::free(std::exchange(blocks_, blocks_->next));
}

template <class E, class Traits>
void CZAtlList<E, Traits>::Unlink(CZNode* node) {
  (node->prev != nullptr ? node->prev->next : head_) = node->next;
  (node->next != nullptr ? node->next->prev : tail_) = node->prev;
}

template <class E, class Traits>
void CZAtlList<E, Traits>::Link(CZNode* node, CZNode* prev, CZNode* next) {
  node->prev = prev;
  node->next = next;
  (prev != nullptr ? prev->next : head_) = node;
  (next != nullptr ? next->prev : tail_) = node;
}
