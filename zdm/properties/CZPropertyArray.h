// The property of a list of properties. Copying replaces the members by clones of the other's; they
// are not stored.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyArray.h"
#include "zdm/properties/IZPropertyImpl.h"

class ZDM_API CZPropertyArray
    : public IZListImpl<IZPropertyArray, IZProperty, IZPropertyImpl<IZPropertyArray>> {
  ZDM_OBJECT(CZPropertyArray)
 public:
  CZPropertyArray();

  void CopyFrom(IZProperty* source) override;
  /// Lists do not merge: this one becomes read-only, and the answer is false.
  bool MergeWith(IZProperty* other) override;

  LONG SetPointCount(USHORT count) override;
  ULONG GetPointCount() override;
  void AddPoints(LONG count, const OLECHAR* name, const OLECHAR* displayName,
                 const GUID& guid) override;
  ULONG SetPoints(const double* coordinates, ULONG count) override;

 private:
  bool beingCopied_ = false;
};
