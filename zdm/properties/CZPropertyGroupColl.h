// A list of groups that is a property itself. Only that property is copied and stored, not the
// members.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/properties/IZPropertyImpl.h"

class ZDM_API CZPropertyGroupColl : public IZPropertyImpl<IZProperty>,
                                    public IZListImpl<IZPropertyGroupColl, IZPropertyGroup> {
  ZDM_OBJECT(CZPropertyGroupColl)
 public:
  IZObject* Clone() override { return IZPropertyImpl::Clone(); }

  void Reserved34(LONG, IZObject**) override {}
  IZPropertyGroup* AddGroup(const OLECHAR* name) override;
  IZProperty* FindProperty(const GUID& guid) override;
  IZPropertyGroup* FindGroup(const OLECHAR* name) override;
};
