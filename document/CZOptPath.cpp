#include "document/CZOptPath.h"

#include "platform/ole/CAtlException.h"

ZDM_OBJECT_BODY(CZOptPath)

IZObject* CZOptPath::Clone() {
  auto* copy = new CZOptPath;
  copy->objects_ = objects_;
  copy->ForgetReference();
  return copy;
}

IZDMObject* CZOptPath::GetNext(LONGLONG& position) {
  if (position < 1 || position > GetCount()) throw CAtlException(E_FAIL);
  IZDMObject* object = objects_[static_cast<std::size_t>(position - 1)];
  position = position < GetCount() ? position + 1 : 0;
  return object;
}

void CZOptPath::Append(IZDMObject* object) {
  if (object != nullptr) objects_.emplace_back(object);
}

IZDMObject* CZOptPath::GetBottomObject() {
  return objects_.empty() ? nullptr : objects_.back().Get();
}
