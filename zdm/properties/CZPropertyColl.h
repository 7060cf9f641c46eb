// A list of properties that is a property itself. Only that property is copied and stored, not the
// members.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyImpl.h"

class ZDM_API CZPropertyColl : public IZListImpl<IZPropertyColl, IZProperty>,
                               public IZPropertyImpl<IZProperty> {
  ZDM_OBJECT(CZPropertyColl)
 public:
  IZObject* Clone() override { return IZPropertyImpl::Clone(); }

  IZProperty* AddProperty(const GUID* classId, const OLECHAR* name, const OLECHAR* displayName,
                          const GUID& guid, ULONG type) override;
  IZProperty* AddNamedProperty(const OLECHAR* name, const GUID& guid, ULONG type) override;
  IZProperty* AddYesNo(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid) override;
  IZProperty* AddDouble(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                        double value) override;
  IZProperty* AddLong(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                      LONG value) override;
  IZProperty* AddString(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                        const OLECHAR* value) override;
  IZProperty* AddBool(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                      bool value) override;
};
