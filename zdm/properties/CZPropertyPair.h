// The paired property. The pair value is not stored.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyPair.h"

class ZDM_API CZPropertyPair : public IZPropertyImpl<IZPropertyPair> {
  ZDM_OBJECT(CZPropertyPair)
 public:
  // Its own operations, after getVersion. Both answer 0.
  virtual LONG GetPairValue(ULONG* out);
  virtual LONG SetPairValue(ULONG value);

  /// The pair value becomes extra 3 of `source`.
  void CopyFrom(IZProperty* source) override;

 private:
  ULONG pairValue_ = 0;
};
