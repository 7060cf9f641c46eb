// A named group of a property sheet: its properties, and groups below it. What adds or finds
// something hands it out borrowed.
#pragma once

#include "platform/core/IZObject.h"

struct IZProperty;
struct IZPropertyColl;
struct IZPropertyGroupColl;

struct ZDM_INTERFACE IZPropertyGroup : IZObject {
  /// Passed on to the groups below, which do nothing.
  virtual void Reserved3(LONG context, IZObject** out) = 0;  // 3
  /// The groups below (borrowed, never null).
  virtual IZPropertyGroupColl* GetGroups() = 0;  // 4
  /// The properties (borrowed, never null).
  virtual IZPropertyColl* GetProperties() = 0;  // 5
  /// A copy of the group's name for the caller, never null.
  virtual void GetName(BSTR* out) = 0;  // 6
  /// Null gives an empty name.
  virtual void SetName(const OLECHAR* name) = 0;  // 7
  /// Neither groups nor properties.
  virtual bool IsEmpty() = 0;  // 8
  /// A new group at the end of the groups below.
  virtual IZPropertyGroup* AddGroup(const OLECHAR* name) = 0;  // 9

  // As of IZPropertyColl, on the properties.

  virtual IZProperty* AddDouble(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                                double value) = 0;  // 10
  virtual IZProperty* AddLong(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                              LONG value) = 0;  // 11
  virtual IZProperty* AddString(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                                const OLECHAR* value) = 0;  // 12
  virtual IZProperty* AddBool(const OLECHAR* name, const OLECHAR* displayName, const GUID& guid,
                              bool value) = 0;  // 13

  /// The first property of that GUID, here and then depth first in the groups below; null if none
  /// and for GUID_UNSET.
  virtual IZProperty* FindProperty(const GUID& guid) = 0;  // 14
};
