#pragma once

template <class Base, class Elem>
Elem* IZListOperations<Base, Elem>::GetHead() {
  return List::IsEmpty() ? nullptr : List::GetHead().Get();
}

template <class Base, class Elem>
Elem* IZListOperations<Base, Elem>::GetTail() {
  return List::IsEmpty() ? nullptr : List::GetTail().Get();
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveHead(Elem** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = List::RemoveHead().Detach();
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveTail(Elem** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = List::RemoveTail().Detach();
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveItem(Elem* element) {
  if (element == nullptr) return E_INVALIDARG;
  if (POSITION pos = FindNode(element)) List::RemoveAt(pos);
  return S_OK;
}

template <class Base, class Elem>
void IZListOperations<Base, Elem>::AddHead(IZObject* object) {
  if (object != nullptr) List::AddHead(ZRefPtr<Elem>(object));
}

template <class Base, class Elem>
void IZListOperations<Base, Elem>::AddTail(IZObject* object) {
  if (object != nullptr) List::AddTail(ZRefPtr<Elem>(object));
}

template <class Base, class Elem>
Elem* IZListOperations<Base, Elem>::GetNext(LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  Elem* element = List::GetNext(at).Get();
  pos = FromPosition(at);
  return element;
}

template <class Base, class Elem>
Elem* IZListOperations<Base, Elem>::GetPrev(LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  Elem* element = List::GetPrev(at).Get();
  pos = FromPosition(at);
  return element;
}

template <class Base, class Elem>
Elem* IZListOperations<Base, Elem>::GetAt(LONGLONG pos) {
  return List::GetAt(ToPosition(pos)).Get();
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::SetAt(LONGLONG pos, Elem* element) {
  if (element == nullptr) return E_INVALIDARG;
  if (List::GetAt(ToPosition(pos)).Get() == element) return S_OK;
  ZRefPtr<Elem> held;
  held.Query(element);
  List::SetAt(ToPosition(pos), held);
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::InsertAfter(Elem* element, LONGLONG* pos) {
  if (element == nullptr || pos == nullptr) return E_INVALIDARG;
  *pos = FromPosition(List::InsertAfter(ToPosition(*pos), element));
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::InsertBefore(Elem* element, LONGLONG* pos) {
  if (element == nullptr || pos == nullptr) return E_INVALIDARG;
  *pos = FromPosition(List::InsertBefore(ToPosition(*pos), element));
  return S_OK;
}

template <class Base, class Elem>
LONGLONG IZListOperations<Base, Elem>::Find(Elem* element, LONGLONG startAfter) {
  return element != nullptr ? FromPosition(FindNode(element, ToPosition(startAfter))) : 0;
}

template <class Base, class Elem>
bool IZListOperations<Base, Elem>::Has(Elem* element) {
  return FindNode(element) != nullptr;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::GetCount() {
  return static_cast<LONG>(List::GetCount());
}

template <class Base, class Elem>
bool IZListOperations<Base, Elem>::IsEmpty() {
  return List::IsEmpty();
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveHeadNoReturn() {
  List::RemoveHeadNoReturn();
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveTailNoReturn() {
  List::RemoveTailNoReturn();
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveAll() {
  List::RemoveAll();
  return S_OK;
}

template <class Base, class Elem>
LONGLONG IZListOperations<Base, Elem>::GetHeadPosition() {
  return FromPosition(List::GetHeadPosition());
}

template <class Base, class Elem>
LONGLONG IZListOperations<Base, Elem>::GetTailPosition() {
  return FromPosition(List::GetTailPosition());
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::RemoveAt(LONGLONG pos) {
  if (pos == 0) return E_INVALIDARG;
  List::RemoveAt(ToPosition(pos));
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::MoveToHead(LONGLONG pos) {
  List::MoveToHead(ToPosition(pos));
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::MoveToTail(LONGLONG pos) {
  List::MoveToTail(ToPosition(pos));
  return S_OK;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::SwapElements(LONGLONG first, LONGLONG second) {
  List::SwapElements(ToPosition(first), ToPosition(second));
  return S_OK;
}

template <class Base, class Elem>
LONGLONG IZListOperations<Base, Elem>::FindIndex(ULONGLONG index) {
  return FromPosition(List::FindIndex(index));
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::MovePrev(Elem* element) {
  if (element == GetHead()) return E_FAIL;
  for (POSITION pos = List::GetTailPosition(); pos != nullptr;) {
    POSITION at = pos;
    if (List::GetPrev(pos).Get() != element) continue;
    List::SwapElements(at, pos);
    return S_OK;
  }
  return E_FAIL;
}

template <class Base, class Elem>
LONG IZListOperations<Base, Elem>::MoveNext(Elem* element) {
  if (element == GetTail()) return E_FAIL;
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    POSITION at = pos;
    if (List::GetNext(pos).Get() != element) continue;
    List::SwapElements(at, pos);
    return S_OK;
  }
  return E_FAIL;
}

/// By identity and without touching counts, as lists are searched often.
template <class Base, class Elem>
POSITION IZListOperations<Base, Elem>::FindNode(Elem* element, POSITION startAfter) {
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
