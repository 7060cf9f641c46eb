// The groups of a property sheet, or of a group. What adds or finds something hands it out
// borrowed.
#pragma once

#include "zdm/framework/IZList.h"

struct IZProperty;
struct IZPropertyGroup;

struct ZDM_INTERFACE IZPropertyGroupColl : IZList<IZObject, IZPropertyGroupColl, IZPropertyGroup> {
  virtual void Reserved34(LONG context, IZObject** out) = 0;  // 34
  /// A new group at the end.
  virtual IZPropertyGroup* AddGroup(const OLECHAR* name) = 0;  // 35
  /// The first property of that GUID, depth first in list order; null if none and for GUID_UNSET.
  virtual IZProperty* FindProperty(const GUID& guid) = 0;  // 36
  /// The first group of that name, compared as names are; groups below are not searched.
  virtual IZPropertyGroup* FindGroup(const OLECHAR* name) = 0;  // 37
};
