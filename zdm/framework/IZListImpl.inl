#pragma once

template <class Coll, class Elem>
Elem* IZListImpl<Coll, Elem>::GetHead() {
  return List::IsEmpty() ? nullptr : List::GetHead().Get();
}

template <class Coll, class Elem>
Elem* IZListImpl<Coll, Elem>::GetTail() {
  return List::IsEmpty() ? nullptr : List::GetTail().Get();
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveHead(Elem** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = List::RemoveHead().Detach();
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveTail(Elem** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = List::RemoveTail().Detach();
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveItem(Elem* element) {
  if (element == nullptr) return E_INVALIDARG;
  if (POSITION pos = FindNode(element)) List::RemoveAt(pos);
  return S_OK;
}

template <class Coll, class Elem>
void IZListImpl<Coll, Elem>::AddHead(IZObject* object) {
  if (object != nullptr) List::AddHead(ZRefPtr<Elem>(object));
}

template <class Coll, class Elem>
void IZListImpl<Coll, Elem>::AddTail(IZObject* object) {
  if (object != nullptr) List::AddTail(ZRefPtr<Elem>(object));
}

template <class Coll, class Elem>
Elem* IZListImpl<Coll, Elem>::GetNext(LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  Elem* element = List::GetNext(at).Get();
  pos = FromPosition(at);
  return element;
}

template <class Coll, class Elem>
Elem* IZListImpl<Coll, Elem>::GetPrev(LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  Elem* element = List::GetPrev(at).Get();
  pos = FromPosition(at);
  return element;
}

template <class Coll, class Elem>
Elem* IZListImpl<Coll, Elem>::GetAt(LONGLONG pos) {
  return List::GetAt(ToPosition(pos)).Get();
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::SetAt(LONGLONG pos, Elem* element) {
  if (element == nullptr) return E_INVALIDARG;
  if (List::GetAt(ToPosition(pos)).Get() == element) return S_OK;
  ZRefPtr<Elem> held;
  held.Query(element);
  List::SetAt(ToPosition(pos), held);
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::InsertAfter(Elem* element, LONGLONG* pos) {
  if (element == nullptr || pos == nullptr) return E_INVALIDARG;
  *pos = FromPosition(List::InsertAfter(ToPosition(*pos), element));
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::InsertBefore(Elem* element, LONGLONG* pos) {
  if (element == nullptr || pos == nullptr) return E_INVALIDARG;
  *pos = FromPosition(List::InsertBefore(ToPosition(*pos), element));
  return S_OK;
}

template <class Coll, class Elem>
LONGLONG IZListImpl<Coll, Elem>::Find(Elem* element, LONGLONG startAfter) {
  return element != nullptr ? FromPosition(FindNode(element, ToPosition(startAfter))) : 0;
}

template <class Coll, class Elem>
bool IZListImpl<Coll, Elem>::Has(Elem* element) {
  return FindNode(element) != nullptr;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::GetCount() {
  return static_cast<LONG>(List::GetCount());
}

template <class Coll, class Elem>
bool IZListImpl<Coll, Elem>::IsEmpty() {
  return List::IsEmpty();
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveHeadNoReturn() {
  List::RemoveHeadNoReturn();
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveTailNoReturn() {
  List::RemoveTailNoReturn();
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveAll() {
  List::RemoveAll();
  return S_OK;
}

template <class Coll, class Elem>
LONGLONG IZListImpl<Coll, Elem>::GetHeadPosition() {
  return FromPosition(List::GetHeadPosition());
}

template <class Coll, class Elem>
LONGLONG IZListImpl<Coll, Elem>::GetTailPosition() {
  return FromPosition(List::GetTailPosition());
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::RemoveAt(LONGLONG pos) {
  if (pos == 0) return E_INVALIDARG;
  List::RemoveAt(ToPosition(pos));
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::MoveToHead(LONGLONG pos) {
  List::MoveToHead(ToPosition(pos));
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::MoveToTail(LONGLONG pos) {
  List::MoveToTail(ToPosition(pos));
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::SwapElements(LONGLONG first, LONGLONG second) {
  List::SwapElements(ToPosition(first), ToPosition(second));
  return S_OK;
}

template <class Coll, class Elem>
LONGLONG IZListImpl<Coll, Elem>::FindIndex(ULONGLONG index) {
  return FromPosition(List::FindIndex(index));
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::MovePrev(Elem* element) {
  if (element == GetHead()) return E_FAIL;
  for (POSITION pos = List::GetTailPosition(); pos != nullptr;) {
    POSITION at = pos;
    if (List::GetPrev(pos).Get() != element) continue;
    List::SwapElements(at, pos);
    return S_OK;
  }
  return E_FAIL;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::MoveNext(Elem* element) {
  if (element == GetTail()) return E_FAIL;
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    POSITION at = pos;
    if (List::GetNext(pos).Get() != element) continue;
    List::SwapElements(at, pos);
    return S_OK;
  }
  return E_FAIL;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::AddHeadColl(Coll* coll) {
  if (coll == nullptr) return E_INVALIDARG;
  if (coll == this) return S_OK;
  List::AllOrNothing([&] {
    for (LONGLONG pos = coll->GetTailPosition(); pos != 0;) List::AddHead(coll->GetPrev(pos));
  });
  return S_OK;
}

template <class Coll, class Elem>
LONG IZListImpl<Coll, Elem>::AddTailColl(Coll* coll) {
  if (coll == nullptr) return E_INVALIDARG;
  if (coll == this) return S_OK;
  List::AllOrNothing([&] {
    for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) List::AddTail(coll->GetNext(pos));
  });
  return S_OK;
}

/// By identity and without touching counts, as lists are searched often.
template <class Coll, class Elem>
POSITION IZListImpl<Coll, Elem>::FindNode(Elem* element, POSITION startAfter) {
  POSITION pos = startAfter;
  if (pos != nullptr) {
    List::GetNext(pos);
  } else {
    pos = List::GetHeadPosition();
  }
  while (pos != nullptr) {
    POSITION at = pos;
    if (List::GetNext(pos).Get() == element) return at;
  }
  return nullptr;
}
