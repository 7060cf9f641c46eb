// The generic list interface: 31 operations that follow those of Base in every collection
// interface, such as `struct IZDMObjColl : IZList<IZObject, IZDMObjColl, IZDMObject>`.
// Positions are opaque: 0 is before the head and after the tail; a position stays valid until its
// node is removed. Elements handed out as a result are borrowed. Elements may be null. What adds a
// node throws CAtlException(E_OUTOFMEMORY) without memory and then adds none.
// The number behind an operation counts from the first one after Base.
#pragma once

#include "platform/core/IZObject.h"

template <class Base, class Coll, class Elem>
struct ZDM_INTERFACE IZList : Base {
  /// First element; null for an empty list.
  virtual Elem* GetHead() = 0;  // 1
  virtual Elem* GetTail() = 0;  // 2
  /// Unlinks the first element and hands it out with the list's reference. E_INVALIDARG for null;
  /// throws CAtlException(E_FAIL) for an empty list.
  virtual LONG RemoveHead(Elem** out) = 0;  // 3
  virtual LONG RemoveTail(Elem** out) = 0;  // 4
  /// Removes the first node that holds `element`; also S_OK when there is none. E_INVALIDARG: null.
  virtual LONG RemoveItem(Elem* element) = 0;  // 5
  /// Adds the object's view for Elem; an object without one is added as a null element; null
  /// changes nothing.
  virtual void AddHead(IZObject* object) = 0;  // 6
  virtual void AddTail(IZObject* object) = 0;  // 7
  /// Element at `pos`; moves `pos` to the next (previous) node, 0 past the end. Throws
  /// CAtlException(E_FAIL) if `pos` is 0.
  virtual Elem* GetNext(LONGLONG& pos) = 0;  // 8
  virtual Elem* GetPrev(LONGLONG& pos) = 0;  // 9
  /// Throws CAtlException(E_FAIL) if `pos` is 0.
  virtual Elem* GetAt(LONGLONG pos) = 0;  // 10
  /// Replaces the element of a node. E_INVALIDARG for a null element; throws
  /// CAtlException(E_FAIL) if `pos` is 0.
  virtual LONG SetAt(LONGLONG pos, Elem* element) = 0;  // 11
  /// Inserts after (before) `*pos`, or where `*pos` is 0 at the tail (head); `*pos` becomes the new
  /// node. E_INVALIDARG for null arguments.
  virtual LONG InsertAfter(Elem* element, LONGLONG* pos) = 0;   // 12
  virtual LONG InsertBefore(Elem* element, LONGLONG* pos) = 0;  // 13
  /// First node behind `startAfter` (from the head when 0) that holds `element` itself; 0 if none
  /// and for null.
  virtual LONGLONG Find(Elem* element, LONGLONG startAfter) = 0;  // 14
  /// True when some node holds `element` itself, which may be null.
  virtual bool Has(Elem* element) = 0;  // 15
  virtual LONG GetCount() = 0;          // 16
  virtual bool IsEmpty() = 0;           // 17
  /// Throw CAtlException(E_FAIL) for an empty list.
  virtual LONG RemoveHeadNoReturn() = 0;   // 18
  virtual LONG RemoveTailNoReturn() = 0;   // 19
  virtual LONG RemoveAll() = 0;            // 20
  virtual LONGLONG GetHeadPosition() = 0;  // 21
  virtual LONGLONG GetTailPosition() = 0;  // 22
  /// E_INVALIDARG if `pos` is 0.
  virtual LONG RemoveAt(LONGLONG pos) = 0;  // 23
  /// Throw CAtlException(E_FAIL) if `pos` is 0.
  virtual LONG MoveToHead(LONGLONG pos) = 0;  // 24
  virtual LONG MoveToTail(LONGLONG pos) = 0;  // 25
  /// Exchanges the places of two nodes; each position keeps its element. Throws
  /// CAtlException(E_FAIL) if one of two different positions is 0.
  virtual LONG SwapElements(LONGLONG first, LONGLONG second) = 0;  // 26
  /// Node number `index` from the head; 0 past the end.
  virtual LONGLONG FindIndex(ULONGLONG index) = 0;  // 27
  /// Moves the element one place towards the head (tail). E_FAIL when it is the first (last)
  /// already or not in the list.
  virtual LONG MovePrev(Elem* element) = 0;  // 28
  virtual LONG MoveNext(Elem* element) = 0;  // 29
  /// Adds the other collection's elements in their order in front (at the end); itself: nothing
  /// changes. E_INVALIDARG for null.
  virtual LONG AddHeadColl(Coll* coll) = 0;  // 30
  virtual LONG AddTailColl(Coll* coll) = 0;  // 31
};
