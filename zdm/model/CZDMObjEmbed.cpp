#include "zdm/model/CZDMObjEmbed.h"

ZDM_OBJECT_BODY(CZDMObjEmbed)

HRESULT CZDMObjEmbed::GetExtClassID(GUID* out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = GUID_NULL;
  return ext_ != nullptr ? ext_->GetClassID(out) : E_FAIL;
}
