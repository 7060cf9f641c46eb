// The set of GUIDs.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropKeyArray.h"

class ZDM_API CZPropKeyArray : public IZObjectImpl<IZPropKeyArray> {
  ZDM_OBJECT(CZPropKeyArray)
 public:
  const GUID* AddKey(const GUID& key) override;
  const std::list<GUID>* GetKeys() override { return &keys_; }
  bool IsEmpty() override { return keys_.empty(); }

 private:
  std::list<GUID> keys_;
};
