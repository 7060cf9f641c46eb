#include "zdm/properties/CZPropertyPair.h"

ZDM_OBJECT_BODY(CZPropertyPair)

LONG CZPropertyPair::GetPairValue(ULONG* out) {
  *out = pairValue_;
  return S_OK;
}

LONG CZPropertyPair::SetPairValue(ULONG value) {
  pairValue_ = value;
  return S_OK;
}

void CZPropertyPair::CopyFrom(IZProperty* source) {
  if (TakeFrom(source)) pairValue_ = source->GetExtra3();
}
