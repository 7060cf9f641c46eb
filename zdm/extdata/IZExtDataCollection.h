// The items of one group, in order; one reference each. A name may occur more than once, and the
// first one of that name counts. Whatever takes an item takes any object and holds its IZExtData
// view.
#pragma once

#include "zdm/framework/IZList.h"

struct IZDatabase;
struct IZExtData;
struct IZStream;

struct ZDM_INTERFACE IZExtDataCollection : IZList<IZObject, IZExtDataCollection, IZExtData> {
  using IZObject::Clone;

  /// A new collection of cloned items, one reference for the caller; nothing for null.
  virtual void Clone(IZExtDataCollection** out) = 0;  // 34
  /// Replaces the items by clones of those of `source`.
  virtual void CopyFrom(IZExtDataCollection* source) = 0;         // 35
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 36
  /// Appends the items read. Damage throws CAtlException(E_FAIL); what was read stays.
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 37
};
