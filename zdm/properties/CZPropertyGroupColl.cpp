#include "zdm/properties/CZPropertyGroupColl.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/properties/PropertySearch.h"

ZDM_OBJECT_BODY(CZPropertyGroupColl)

IZPropertyGroup* CZPropertyGroupColl::AddGroup(const OLECHAR* name) {
  const auto group = zdm::NewOf<IZPropertyGroup, CZPropertyGroup>();
  group->SetName(name);
  AddTail(group);
  return group;
}

IZProperty* CZPropertyGroupColl::FindProperty(const GUID& guid) {
  return guid == GUID_UNSET ? nullptr : zdm::FindPropertyIn(this, guid);
}

IZPropertyGroup* CZPropertyGroupColl::FindGroup(const OLECHAR* name) {
  const zdm::Bstr wanted(name);
  for (LONGLONG pos = GetHeadPosition(); pos != 0;) {
    IZPropertyGroup* group = GetNext(pos);
    if (group == nullptr) continue;
    zdm::Bstr own;
    group->GetName(own.Out());
    if (zdm::SameName(own.Get(), wanted.Get())) return group;
  }
  return nullptr;
}
