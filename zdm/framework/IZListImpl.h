// The list interface over a CZList: what every collection of the library derives from.
// Coll is the collection interface, an IZList<..., Coll, Elem>; Base implements what that one
// derives from. A collection of one's own:
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

#include "zdm/framework/IZList.h"
#include "zdm/framework/IZListOperations.h"
#include "zdm/framework/IZObjectImpl.h"

template <class Coll, class Elem, class Base = IZObjectImpl<Coll>>
class IZListImpl : public IZListOperations<Base, Elem> {
 public:
  LONG AddHeadColl(Coll* coll) override;
  LONG AddTailColl(Coll* coll) override;

 protected:
  using List = CZList<Elem>;
};

#include "zdm/framework/IZListImpl.inl"
