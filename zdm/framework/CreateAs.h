// Creation through the factory, held by the view that the caller wants: the way to a new object
// where its class is known by its identifier, or declared only.
#pragma once

#include "platform/core/ZCore.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/ZClass.h"
#include "zdm/framework/ZRefPtr.h"

namespace zdm {

/// A new object of class `classId` by its view T; null when the class is not registered or does not
/// answer to T. Throws CAtlException(E_OUTOFMEMORY).
template <class T>
ZRefPtr<T> CreateAs(const GUID& classId) {
  CZObject* object = ZCore::GetZFactory()->Create(classId);
  if (object == nullptr) return nullptr;
  ZRefPtr<T> view;
  view.Query(object);
  object->DecrementCount();  // the creation reference
  return view;
}

/// The same by the row of class C, which may be an incomplete type.
template <class T, class C>
ZRefPtr<T> CreateAs() {
  return CreateAs<T>(ClassRow<C>::kClassID);
}

/// As CreateAs; throws CAtlException(E_OUTOFMEMORY) instead of null.
template <class T, class C>
ZRefPtr<T> NewOf() {
  ZRefPtr<T> object = CreateAs<T, C>();
  if (object == nullptr) throw CAtlException(E_OUTOFMEMORY);
  return object;
}

}  // namespace zdm
