#include "zdm/extdata/ZExtDataWrapper.h"

#include "platform/core/CZGlobalData.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/IZExtDataAccess.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjMgr.h"

namespace {

IZExtData* Find(IZObject* object, const GUID& key, const OLECHAR* name) {
  auto* carrier = zdm::ViewAs<IZDMObject>(object);
  return carrier != nullptr ? carrier->GetExtData(key, name) : nullptr;
}

IZExtDataAccess* FindAccess(IZObject* object, const GUID& key, const OLECHAR* name) {
  return zdm::ViewAs<IZExtDataAccess>(Find(object, key, name));
}

template <class T>
void Add(IZObject* object, const GUID& key, const OLECHAR* name, T value,
         LONG (IZExtDataAccess::*set)(T), bool updateExisting) {
  auto* carrier = zdm::ViewAs<IZDMObject>(object);
  if (carrier == nullptr) return;
  IZExtDataAccess* present = updateExisting ? FindAccess(object, key, name) : nullptr;
  if (present != nullptr) {
    (present->*set)(value);
    return;
  }
  const auto item = zdm::NewOf<IZExtDataAccess, CZExtDataObj>();
  item->SetName(name);
  (item.Get()->*set)(value);
  carrier->SetExtData(key, item);
}

template <class T>
bool Get(IZObject* object, const GUID& key, const OLECHAR* name, T* value,
         LONG (IZExtDataAccess::*get)(T*)) {
  IZExtDataAccess* item = FindAccess(object, key, name);
  return item != nullptr && (item->*get)(value) == S_OK;
}

void Remove(IZObject* object, const GUID& key, const OLECHAR* name, const GUID& group) {
  IZExtData* item = Find(object, key, name);
  if (item != nullptr) zdm::ViewAs<IZDMObject>(object)->RemoveExtData(group, item);
}

template <class Objects>
bool FindFirst(Objects* objects, const GUID& key, const OLECHAR* name, IZDMObject** out,
               bool validOnly) {
  *out = nullptr;
  if (objects == nullptr) return false;
  LONGLONG pos = validOnly ? objects->GetValidHeadPosition() : objects->GetHeadPosition();
  while (pos != 0) {
    IZDMObject* object = validOnly ? objects->GetValidNext(pos) : objects->GetNext(pos);
    if (!ZExtDataWrapper::IsExistExtData(object, key, name)) continue;
    *out = object;
    return true;
  }
  return false;
}

}  // namespace

ZExtDataWrapper::~ZExtDataWrapper() = default;

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const LONG& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetLong, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const bool& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetBool, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const SHORT& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetShort, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const tagZVARIANT& value, bool updateExisting) {
  Add(object, key, name, &value, &IZExtDataAccess::SetVariant, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const double& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetDouble, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const float& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetFloat, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const BYTE& value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetByte, updateExisting);
}

void ZExtDataWrapper::AddExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 const OLECHAR* value, bool updateExisting) {
  Add(object, key, name, value, &IZExtDataAccess::SetString, updateExisting);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 LONG* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetLong);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 bool* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetBool);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 SHORT* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetShort);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 double* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetDouble);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 float* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetFloat);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 BYTE* value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetByte);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 OLECHAR** value) {
  return Get(object, key, name, value, &IZExtDataAccess::GetString);
}

bool ZExtDataWrapper::GetExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                 tagZVARIANT& value) {
  return Get(object, key, name, &value, &IZExtDataAccess::GetVariant);
}

bool ZExtDataWrapper::IsExistExtData(IZObject* object, const GUID& key, const OLECHAR* name) {
  return Find(object, key, name) != nullptr;
}

bool ZExtDataWrapper::GetMark(IZObject* object, const GUID& key, const OLECHAR* name) {
  return IsExistExtData(object, key, name);
}

void ZExtDataWrapper::SetMark(IZObject* object, const GUID& key, const OLECHAR* name,
                              bool onlyIfAbsent) {
  if (onlyIfAbsent && GetMark(object, key, name)) return;
  AddExtData(object, key, name, true, false);
}

void ZExtDataWrapper::ClearMark(IZObject* object, const GUID& key, const OLECHAR* name) {
  Remove(object, key, name, key);
}

void ZExtDataWrapper::RemoveExtData(IZObject* object, const GUID& key, const OLECHAR* name) {
  Remove(object, key, name, CZGlobalData::GetZAppID());
}

bool ZExtDataWrapper::JudgeExtData(IZObject* object, const GUID& key, const OLECHAR* name,
                                   const BYTE& value) {
  IZExtDataAccess* item = FindAccess(object, key, name);
  if (item == nullptr) return false;
  BYTE held = 0;
  item->GetByte(&held);
  return held == value;
}

LONG ZExtDataWrapper::GetValidObjectCount(IZDMObjMgr* manager, const GUID& key, const OLECHAR* name,
                                          BYTE value) {
  LONG count = 0;
  if (manager == nullptr) return count;
  for (LONGLONG pos = manager->GetValidHeadPosition(); pos != 0;) {
    if (JudgeExtData(manager->GetValidNext(pos), key, name, value)) ++count;
  }
  return count;
}

bool ZExtDataWrapper::FindFirstFrontObject(IZDMObjMgr* manager, const GUID& key,
                                           const OLECHAR* name, IZDMObject** out, bool validOnly) {
  return FindFirst(manager, key, name, out, validOnly);
}

bool ZExtDataWrapper::FindFirstFrontObject(IZDMObjColl* collection, const GUID& key,
                                           const OLECHAR* name, IZDMObject** out, bool validOnly) {
  return FindFirst(collection, key, name, out, validOnly);
}
