// A group of a property sheet. It is a property as well, whose name is not the group's; only that
// property is copied and stored, not the group's name and members.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/properties/IZPropertyImpl.h"

namespace zdm {

/// The group without the property, so that the two names stay apart.
class ZDM_API PropertyGroupPart : public IZObjectImpl<IZPropertyGroup> {
 public:
  PropertyGroupPart();

  void Reserved3(LONG context, IZObject** out) override;
  IZPropertyGroupColl* GetGroups() override { return groups_; }
  IZPropertyColl* GetProperties() override { return properties_; }
  void GetName(BSTR* out) override { *out = CopyOfName(name_); }
  void SetName(const OLECHAR* name) override { name_ = Bstr(name); }
  bool IsEmpty() override { return groups_->IsEmpty() && properties_->IsEmpty(); }
  IZPropertyGroup* AddGroup(const OLECHAR* name) override { return groups_->AddGroup(name); }
  IZProperty* AddDouble(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                        double value) override;
  IZProperty* AddLong(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                      LONG value) override;
  IZProperty* AddString(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                        const OLECHAR* value) override;
  IZProperty* AddBool(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                      bool value) override;
  IZProperty* FindProperty(const GUID& guid) override;

 private:
  Bstr name_;  // null counts as empty
  ZRefPtr<IZPropertyGroupColl> groups_;
  ZRefPtr<IZPropertyColl> properties_;
};

}  // namespace zdm

class ZDM_API CZPropertyGroup : public IZPropertyImpl<IZProperty>, public zdm::PropertyGroupPart {
  ZDM_OBJECT(CZPropertyGroup)
 public:
  IZObject* Clone() override { return IZPropertyImpl::Clone(); }
  /// Passed on to the groups below.
  void Reserved24() override { Reserved3(0, nullptr); }
};
