// The list interface over a CZList: what every collection of the library derives from.
// Coll is the collection interface, an IZList<..., Coll, Elem>.
#pragma once

#include "zdm/framework/IZList.h"
#include "zdm/framework/IZListOperations.h"
#include "zdm/framework/IZObjectImpl.h"

template <class Coll, class Elem>
class IZListImpl : public IZListOperations<IZObjectImpl<Coll>, Elem> {
 public:
  LONG AddHeadColl(Coll* coll) override;
  LONG AddTailColl(Coll* coll) override;

 protected:
  using List = CZList<Elem>;
};

#include "zdm/framework/IZListImpl.inl"
