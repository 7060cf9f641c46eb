// The list operations over a CZList: adds the list to an implementation Base whose interface has
// them, under the names and with the contracts of IZList.h. Collections are IZListImpl; managers,
// which are objects besides, take this alone.
#pragma once

#include "zdm/framework/CZList.h"

template <class Base, class Elem>
class IZListOperations : public Base, public CZList<Elem> {
 public:
  IZListOperations() : CZList<Elem>(CZList<Elem>::kBlockSize) {}
  /// Elements go while this is still a list: their release may come back to it.
  ~IZListOperations() override { List::RemoveAll(); }

  Elem* GetHead() override;
  Elem* GetTail() override;
  LONG RemoveHead(Elem** out) override;
  LONG RemoveTail(Elem** out) override;
  LONG RemoveItem(Elem* element) override;
  void AddHead(IZObject* object) override;
  void AddTail(IZObject* object) override;
  Elem* GetNext(LONGLONG& pos) override;
  Elem* GetPrev(LONGLONG& pos) override;
  Elem* GetAt(LONGLONG pos) override;
  LONG SetAt(LONGLONG pos, Elem* element) override;
  LONG InsertAfter(Elem* element, LONGLONG* pos) override;
  LONG InsertBefore(Elem* element, LONGLONG* pos) override;
  LONGLONG Find(Elem* element, LONGLONG startAfter) override;
  bool Has(Elem* element) override;
  LONG GetCount() override;
  bool IsEmpty() override;
  LONG RemoveHeadNoReturn() override;
  LONG RemoveTailNoReturn() override;
  LONG RemoveAll() override;
  LONGLONG GetHeadPosition() override;
  LONGLONG GetTailPosition() override;
  LONG RemoveAt(LONGLONG pos) override;
  LONG MoveToHead(LONGLONG pos) override;
  LONG MoveToTail(LONGLONG pos) override;
  LONG SwapElements(LONGLONG first, LONGLONG second) override;
  LONGLONG FindIndex(ULONGLONG index) override;
  LONG MovePrev(Elem* element) override;
  LONG MoveNext(Elem* element) override;

 protected:
  using List = CZList<Elem>;
  static POSITION ToPosition(LONGLONG pos) { return reinterpret_cast<POSITION>(pos); }
  static LONGLONG FromPosition(POSITION pos) { return reinterpret_cast<LONGLONG>(pos); }

 private:
  POSITION FindNode(Elem* element, POSITION startAfter = nullptr);
};

#include "zdm/framework/IZListOperations.inl"
