// The list interface over a CZList: what every collection of the library derives from.
// Coll is the collection interface, an IZList<..., Coll, Elem>. A collection of one's own:
//
//   struct IMyColl : IZList<IZObject, IMyColl, IMy> {};  // operations of its own follow the 31
//   ZDM_DECLARE_INTERFACE(IMyColl)
//   class CMyColl;
//   ZDM_CLASS_ROW(MyModule, true, CMyColl, "11111111-2222-3333-4444-000000000003",
//                 IZObject, IMyColl)
//   class CMyColl : public IZListImpl<IMyColl, IMy> {
//     ZDM_OBJECT(CMyColl)
//   };
//
//   for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
//     if (IMy* element = coll->GetNext(pos)) sum += element->Answer();  // borrowed, may be null
//   }
#pragma once

#include "zdm/framework/CZList.h"
#include "zdm/framework/IZList.h"
#include "zdm/framework/IZObjectImpl.h"

template <class Coll, class Elem>
class IZListImpl : public IZObjectImpl<Coll>, public CZList<Elem> {
 public:
  IZListImpl() : CZList<Elem>(CZList<Elem>::kBlockSize) {}
  /// Elements go while this is still a list: their release may come back to it.
  ~IZListImpl() override { List::RemoveAll(); }

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
  LONG AddHeadColl(Coll* coll) override;
  LONG AddTailColl(Coll* coll) override;

 protected:
  using List = CZList<Elem>;
  static POSITION ToPosition(LONGLONG pos) { return reinterpret_cast<POSITION>(pos); }
  static LONGLONG FromPosition(POSITION pos) { return reinterpret_cast<LONGLONG>(pos); }

 private:
  POSITION FindNode(Elem* element, POSITION startAfter = nullptr);
};

#include "zdm/framework/IZListImpl.inl"
