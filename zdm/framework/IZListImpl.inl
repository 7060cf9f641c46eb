#pragma once

template <class Coll, class Elem, class Base>
LONG IZListImpl<Coll, Elem, Base>::AddHeadColl(Coll* coll) {
  if (coll == nullptr) return E_INVALIDARG;
  if (coll == this) return S_OK;
  List::AllOrNothing([&] {
    for (LONGLONG pos = coll->GetTailPosition(); pos != 0;) List::AddHead(coll->GetPrev(pos));
  });
  return S_OK;
}

template <class Coll, class Elem, class Base>
LONG IZListImpl<Coll, Elem, Base>::AddTailColl(Coll* coll) {
  if (coll == nullptr) return E_INVALIDARG;
  if (coll == this) return S_OK;
  List::AllOrNothing([&] {
    for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) List::AddTail(coll->GetNext(pos));
  });
  return S_OK;
}
