#include "zdm/properties/CZPropertyGroup.h"

#include "zdm/properties/CZPropertyColl.h"
#include "zdm/properties/CZPropertyGroupColl.h"
#include "zdm/properties/PropertySearch.h"

ZDM_OBJECT_BODY(CZPropertyGroup)

namespace zdm {

PropertyGroupPart::PropertyGroupPart()
    : groups_(MakeObject<IZPropertyGroupColl, CZPropertyGroupColl>()),
      properties_(MakeObject<IZPropertyColl, CZPropertyColl>()) {}

void PropertyGroupPart::Reserved3(LONG context, IZObject** out) {
  groups_->Reserved34(context, out);
}

IZProperty* PropertyGroupPart::AddDouble(const OLECHAR* name, const OLECHAR* displayName,
                                         const GUID& guid, double value) {
  return properties_->AddDouble(name, displayName, guid, value);
}

IZProperty* PropertyGroupPart::AddLong(const OLECHAR* name, const OLECHAR* displayName,
                                       const GUID& guid, LONG value) {
  return properties_->AddLong(name, displayName, guid, value);
}

IZProperty* PropertyGroupPart::AddString(const OLECHAR* name, const OLECHAR* displayName,
                                         const GUID& guid, const OLECHAR* value) {
  return properties_->AddString(name, displayName, guid, value);
}

IZProperty* PropertyGroupPart::AddBool(const OLECHAR* name, const OLECHAR* displayName,
                                       const GUID& guid, bool value) {
  return properties_->AddBool(name, displayName, guid, value);
}

IZProperty* PropertyGroupPart::FindProperty(const GUID& guid) {
  if (guid == GUID_UNSET) return nullptr;
  IZProperty* found = FindPropertyIn(properties_, guid);
  return found != nullptr ? found : groups_->FindProperty(guid);
}

}  // namespace zdm
