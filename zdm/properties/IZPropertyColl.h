// A list of properties: one page of a property sheet. What adds a property hands it out borrowed;
// null when the class is not known or is none of a property, and nothing is added then.
#pragma once

#include "zdm/framework/IZList.h"

struct IZProperty;

struct ZDM_INTERFACE IZPropertyColl : IZList<IZObject, IZPropertyColl, IZProperty> {
  /// A new property of class `classId` at the end. Without a display name the name is shown.
  virtual IZProperty* AddProperty(const GUID* classId, const OLECHAR* name,
                                  const OLECHAR* displayName, const GUID& guid,
                                  ULONG type) = 0;  // 34
  /// A plain property, shown under its name.
  virtual IZProperty* AddNamedProperty(const OLECHAR* name, const GUID& guid,
                                       ULONG type) = 0;  // 35
  virtual IZProperty* AddYesNo(const OLECHAR* name, const OLECHAR* displayName,
                               const GUID& guid) = 0;  // 36
  virtual IZProperty* AddDouble(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                                double value) = 0;  // 37
  virtual IZProperty* AddLong(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                              LONG value) = 0;  // 38
  virtual IZProperty* AddString(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                                const OLECHAR* value) = 0;  // 39
  /// A yes/no property.
  virtual IZProperty* AddBool(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                              bool value) = 0;  // 40
};
