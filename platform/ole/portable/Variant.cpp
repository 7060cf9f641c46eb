#include "platform/ole/portable/Variant.h"

#include "platform/ole/portable/VariantTypes.h"

#include <cstring>

namespace {

/// Copies an owned value; the caller has seen to `target`, which owns nothing.
HRESULT CopyOwned(VARIANTARG* target, const VARIANTARG& source) {
  VARIANTARG copy = source;
  if ((source.vt & VT_ARRAY) != 0) {
    copy.parray = nullptr;
    if (source.parray != nullptr) {
      const HRESULT result = SafeArrayCopy(source.parray, &copy.parray);
      if (FAILED(result)) return result;
    }
  } else if (source.vt == VT_BSTR) {
    if (source.bstrVal != nullptr) {
      copy.bstrVal = SysAllocStringByteLen(reinterpret_cast<const CHAR*>(source.bstrVal),
                                           SysStringByteLen(source.bstrVal));
      if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
    }
  } else if (source.vt == VT_UNKNOWN || source.vt == VT_DISPATCH) {
    if (source.punkVal != nullptr) source.punkVal->AddRef();
  }
  *target = copy;
  return S_OK;
}

/// The value a reference of one level points at, not copied.
VARIANTARG Followed(const VARIANTARG& reference) {
  VARIANTARG value;
  VariantInit(&value);
  const VARTYPE type = reference.vt & ~VT_BYREF;
  if ((type & VT_ARRAY) != 0) {
    value.parray = *reference.pparray;
  } else if (type == VT_DECIMAL) {
    value.decVal = *reference.pdecVal;
  } else {
    std::memcpy(&value.llVal, reference.byref, zdm::VariantValueSize(type));
  }
  value.vt = type;
  return value;
}

}  // namespace

void VariantInit(VARIANTARG* value) { std::memset(value, 0, sizeof *value); }

HRESULT VariantClear(VARIANTARG* value) {
  if (value == nullptr) return E_INVALIDARG;
  if (!zdm::IsVariantType(value->vt)) return DISP_E_BADVARTYPE;
  if ((value->vt & VT_BYREF) == 0) {
    if ((value->vt & VT_ARRAY) != 0) {
      if (value->parray != nullptr) {
        const HRESULT result = SafeArrayDestroy(value->parray);
        if (FAILED(result)) return result;
      }
    } else if (value->vt == VT_BSTR) {
      SysFreeString(value->bstrVal);
    } else if (value->vt == VT_UNKNOWN || value->vt == VT_DISPATCH) {
      if (value->punkVal != nullptr) value->punkVal->Release();
    }
  }
  value->vt = VT_EMPTY;
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (target == source) return S_OK;
  if (!zdm::IsVariantType(source->vt)) return DISP_E_BADVARTYPE;
  const HRESULT result = VariantClear(target);
  if (FAILED(result)) return result;
  if ((source->vt & VT_BYREF) != 0) {
    *target = *source;
    return S_OK;
  }
  return CopyOwned(target, *source);
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if ((source->vt & VT_BYREF) == 0) return VariantCopy(target, source);
  if (!zdm::IsVariantType(source->vt) || source->byref == nullptr) return E_INVALIDARG;
  VARIANTARG value;
  if (source->vt == (VT_VARIANT | VT_BYREF)) {
    // One more level is followed, but not a reference to a reference to a variant.
    value = *source->pvarVal;
    if (value.vt == (VT_VARIANT | VT_BYREF)) return E_INVALIDARG;
    if (!zdm::IsVariantType(value.vt)) return DISP_E_BADVARTYPE;
    if ((value.vt & VT_BYREF) != 0) {
      if (value.byref == nullptr) return E_INVALIDARG;
      value = Followed(value);
    }
  } else {
    value = Followed(*source);
  }
  // Copied before the target goes: the reference may lead into it.
  VARIANTARG copy;
  HRESULT result = CopyOwned(&copy, value);
  if (FAILED(result)) return result;
  result = VariantClear(target);
  if (FAILED(result)) {
    VariantClear(&copy);
    return result;
  }
  *target = copy;
  return S_OK;
}
