// Creation by class identifier, held by the view that the caller wants.
#pragma once

#include "platform/core/ZCore.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/ZClass.h"
#include "zdm/framework/ZRefPtr.h"

namespace zdm {

/// A new object of class `classId` by its view T; null when the class is not registered, does not
/// answer to T, or there is no memory.
template <class T>
ZRefPtr<T> CreateAs(const GUID& classId) {
  CZObject* object = ZCore::GetZFactory()->Create(classId);
  if (object == nullptr) return nullptr;
  ZRefPtr<T> view;
  view.Query(object);
  object->DecrementCount();  // the creation reference
  return view;
}

/// As CreateAs, for a class that has a row; throws CAtlException(E_OUTOFMEMORY) instead of null.
template <class T, class C>
ZRefPtr<T> NewOf() {
  ZRefPtr<T> object = CreateAs<T>(ClassRow<C>::kClassID);
  if (object == nullptr) throw CAtlException(E_OUTOFMEMORY);
  return object;
}

}  // namespace zdm
