// Stands in for an item whose class the factory does not know. It keeps the item's class identifier
// and bytes and writes them back as they came. Stream form: above Save in IZExtDataObjImpl.inl.
#pragma once

#include "zdm/extdata/IZExtDataObjImpl.h"
#include "zdm/extdata/IZProxyExtDataObj.h"
#include "zdm/module/ClassTable.h"

#include <vector>

class ZDM_API CZProxyExtDataObj : public IZObjectImpl<IZProxyExtDataObj>,
                                  public IZExtDataObjImpl<IZExtData> {
  ZDM_OBJECT(CZProxyExtDataObj)
 public:
  using CZObject::GetClassID;
  using IZExtDataObjImpl::Clone;

  const GUID* GetClassID() override { return &classId_; }
  void SetClassID(const GUID* classId) override;
  int GetData(void** out) override;
  void SetData(const void* data, int length) override;

  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// Reads as many bytes as it holds, in their place.
  void LoadData(IZStream* stream, IZDatabase* database) override;
  void SaveData(IZStream* stream, IZDatabase* database) override;
  /// Takes bytes and class identifier of another proxy.
  void CopyData(IZExtData* source) override;

 private:
  GUID classId_ = GUID_NULL;
  std::vector<BYTE> bytes_;
};
