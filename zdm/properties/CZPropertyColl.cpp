#include "zdm/properties/CZPropertyColl.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/properties/PropertyType.h"

ZDM_OBJECT_BODY(CZPropertyColl)

IZProperty* CZPropertyColl::AddProperty(const GUID* classId, const OLECHAR* name,
                                        const OLECHAR* displayName, const GUID& guid, ULONG type) {
  if (classId == nullptr) return nullptr;
  const ZRefPtr<IZProperty> property = zdm::CreateAs<IZProperty>(*classId);
  if (property == nullptr) return nullptr;
  property->SetName(name);
  property->SetDisplayName(displayName != nullptr ? displayName : name);
  property->SetGUID(guid);
  property->SetType(type);
  AddTail(property);
  return property;
}

IZProperty* CZPropertyColl::AddNamedProperty(const OLECHAR* name, const GUID& guid, ULONG type) {
  return AddProperty(&zdm::ClassRow<CZProperty>::kClassID, name, name, guid, type);
}

IZProperty* CZPropertyColl::AddYesNo(const OLECHAR* name, const OLECHAR* displayName,
                                     const GUID& guid) {
  return AddProperty(&zdm::ClassRow<CZPropertyYesNo>::kClassID, name, displayName, guid,
                     zdm::kPropertyYesNo);
}

IZProperty* CZPropertyColl::AddDouble(const OLECHAR* name, const OLECHAR* displayName,
                                      const GUID& guid, double value) {
  IZProperty* property = AddProperty(&zdm::ClassRow<CZProperty>::kClassID, name, displayName, guid,
                                     zdm::kPropertyDouble);
  if (property != nullptr) property->SetDouble(value);
  return property;
}

IZProperty* CZPropertyColl::AddLong(const OLECHAR* name, const OLECHAR* displayName,
                                    const GUID& guid, LONG value) {
  IZProperty* property = AddProperty(&zdm::ClassRow<CZProperty>::kClassID, name, displayName, guid,
                                     zdm::kPropertyLong);
  if (property != nullptr) property->SetLong(value);
  return property;
}

IZProperty* CZPropertyColl::AddString(const OLECHAR* name, const OLECHAR* displayName,
                                      const GUID& guid, const OLECHAR* value) {
  IZProperty* property = AddProperty(&zdm::ClassRow<CZProperty>::kClassID, name, displayName, guid,
                                     zdm::kPropertyString);
  if (property != nullptr) property->SetString(value);
  return property;
}

IZProperty* CZPropertyColl::AddBool(const OLECHAR* name, const OLECHAR* displayName,
                                    const GUID& guid, bool value) {
  IZProperty* property = AddYesNo(name, displayName, guid);
  if (property != nullptr) property->SetBool(value);
  return property;
}
