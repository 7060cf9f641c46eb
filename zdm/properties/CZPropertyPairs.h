// A list of properties that is a property itself. Copying appends clones of the members; only the
// property is stored.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyPairs.h"

class ZDM_API CZPropertyPairs : public IZListImpl<IZPropertyPairs, IZProperty>,
                                public IZPropertyImpl<IZProperty> {
  ZDM_OBJECT(CZPropertyPairs)
 public:
  IZObject* Clone() override { return IZPropertyImpl::Clone(); }

  void CopyFrom(IZProperty* source) override;
  LONG MergePairs(IZObject* other, bool* result) override;

 private:
  bool beingCopied_ = false;
};
