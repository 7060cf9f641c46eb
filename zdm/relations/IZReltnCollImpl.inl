#pragma once

#include "platform/core/IZStream.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnVisitor.h"

// Relation collection record, little-endian; only valid elements are written.
//   offset  size  field
//        0     4  number of elements, signed; below 1 for none
//   then for each element in list order
//        0    16  class identifier
//       16     ?  the element's own record
template <class... Others>
void IZReltnCollImpl<Others...>::Save(IZStream* stream, IZDatabase* database) {
  LONG count = 0;
  ForEach([&](IZRelation& element) { count += Passes(&element, ZRS_VALID) ? 1 : 0; });
  stream->Write(&count, sizeof(count));
  ForEach([&](IZRelation& element) {
    if (!Passes(&element, ZRS_VALID)) return;
    GUID classId = GUID_NULL;
    element.GetClassID(&classId);
    stream->Write(&classId, sizeof(classId));
    element.Save(stream, database);
  });
}

// Nothing is taken on the strength of the count: an element is made when its identifier is read, so
// a count that the stream cannot hold ends in a short read.
template <class... Others>
void IZReltnCollImpl<Others...>::Load(IZStream* stream, IZDatabase* database) {
  const zdm::LoadDepth nested;
  LONG count = 0;
  stream->Read(&count, sizeof(count));
  for (; count > 0; --count) {
    GUID classId = GUID_NULL;
    stream->Read(&classId, sizeof(classId));
    const ZRefPtr<IZRelation> element = zdm::CreateAs<IZRelation>(classId);
    if (element == nullptr) throw CAtlException(E_FAIL);
    element->Load(stream, database);
    List::AddTail(element);
  }
}

template <class... Others>
bool IZReltnCollImpl<Others...>::Accept(IZDMObject* root, IZDMObject* owner,
                                        IZReltnVisitor* visitor) {
  // Shown to itself, a collector would never come to the end of its list.
  if (static_cast<CZObject*>(visitor) == static_cast<CZObject*>(this)) return false;
  zdm::ChangeWatch::Watch(*this);
  zdm::ChangeWatch::Watch(List::watch_);
  return AnyOf([&](IZRelation& element) {
    zdm::ChangeWatch::Watch(element);  // it may become valid
    return Passes(&element, ZRS_VALID) && visitor->Visit(root, owner, &element);
  });
}

template <class... Others>
LONGLONG IZReltnCollImpl<Others...>::GetHeadStatusPosition(LONG mask) {
  return FromPosition(FirstFrom(List::GetHeadPosition(), mask));
}

template <class... Others>
LONGLONG IZReltnCollImpl<Others...>::GetTailStatusPosition(LONG mask) {
  return FromPosition(LastFrom(List::GetTailPosition(), mask));
}

template <class... Others>
IZRelation* IZReltnCollImpl<Others...>::GetStatusNext(LONG mask, LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  IZRelation* element = List::GetNext(at);
  pos = FromPosition(FirstFrom(at, mask));
  return element;
}

template <class... Others>
IZRelation* IZReltnCollImpl<Others...>::GetStatusPrev(LONG mask, LONGLONG& pos) {
  POSITION at = ToPosition(pos);
  IZRelation* element = List::GetPrev(at);
  pos = FromPosition(LastFrom(at, mask));
  return element;
}

template <class... Others>
void IZReltnCollImpl<Others...>::Clone(IZReltnColl** out, bool deep) {
  *out = nullptr;
  ZRefPtr<IZReltnColl> copy = zdm::CreateAs<IZReltnColl, CZReltnColl>();
  if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
  if (deep) {
    ForEach([&](IZRelation& element) { copy->AddTail(zdm::CloneAs<IZRelation>(&element)); });
  } else {
    copy->AddTailColl(this);
  }
  *out = copy.Detach();
}

template <class... Others>
template <class Test>
bool IZReltnCollImpl<Others...>::AnyOf(Test test) {
  typename List::Walk walk(*this);
  while (const ZRefPtr<IZRelation>* next = walk.Next()) {
    IZRelation* const element = *next;
    if (element != nullptr && test(*element)) return true;
  }
  return false;
}

template <class... Others>
template <class Action>
void IZReltnCollImpl<Others...>::ForEach(Action action) {
  AnyOf([&](IZRelation& element) {
    action(element);
    return false;
  });
}

/// The first node from `pos` towards the tail whose element passes.
template <class... Others>
POSITION IZReltnCollImpl<Others...>::FirstFrom(POSITION pos, LONG mask) {
  while (pos != nullptr) {
    POSITION at = pos;
    if (Passes(List::GetNext(pos), mask)) return at;
  }
  return nullptr;
}

/// The first node from `pos` towards the head whose element passes.
template <class... Others>
POSITION IZReltnCollImpl<Others...>::LastFrom(POSITION pos, LONG mask) {
  while (pos != nullptr) {
    POSITION at = pos;
    if (Passes(List::GetPrev(pos), mask)) return at;
  }
  return nullptr;
}
