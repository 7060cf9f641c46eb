// The framework's interface query, and its typed forms.
#pragma once

#include "platform/core/IZObject.h"
#include "zdm/framework/ZInterface.h"

namespace zdm {

/// The view of `object` for interface `id` (borrowed); null when it does not answer to `id`.
inline void* FindView(CZObject* object, unsigned short id) {
  if (id == ZInterface<IZObject>::ID()) return object->GetIZObject();
  const ULONGLONG offset = object->_GetOffsetofClass(id);
  if (offset == ~ULONGLONG{0}) return nullptr;
  return static_cast<char*>(object->GetLPVOID()) + offset;
}

/// The typed form; also null for a null object.
template <class T>
T* ViewAs(CZObject* object) {
  return object != nullptr ? static_cast<T*>(FindView(object, ZInterface<T>::ID())) : nullptr;
}

}  // namespace zdm

/// Hands out the view of `object` for interface `id`, with one reference.
/// @param out  the view; null when the object does not answer to `id`.
/// Returns S_OK; E_NOINTERFACE, the count unchanged; E_INVALIDARG for null arguments.
inline HRESULT QueryZInterface(CZObject* object, unsigned short id, void** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  if (object == nullptr) return E_INVALIDARG;
  *out = zdm::FindView(object, id);
  if (*out == nullptr) return E_NOINTERFACE;
  object->IncrementCount();
  return S_OK;
}
