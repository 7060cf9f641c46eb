#include "platform/ole/portable/SafeArray.h"

#include "platform/ole/portable/Bstr.h"
#include "platform/ole/portable/VariantTypes.h"

#include <cstdlib>
#include <cstring>

namespace {

// The block of a vector: hidden words, the last of them the element type; descriptor; elements.
struct Block {
  ULONG reserved[3];
  ULONG type;
  SAFEARRAY array;
};
static_assert(offsetof(Block, array) == 16 && sizeof(Block) % 16 == 0);

/// 0 for what arrays here do not hold.
ULONG SizeOfElement(VARTYPE type) {
  switch (type) {
    case VT_DECIMAL:
    case VT_DISPATCH:
    case VT_UNKNOWN:
    case VT_VARIANT:
      return 0;
    default:
      return static_cast<ULONG>(zdm::VariantValueSize(type));
  }
}

Block* BlockOf(SAFEARRAY* array) {
  return reinterpret_cast<Block*>(reinterpret_cast<BYTE*>(array) - offsetof(Block, array));
}

VARTYPE TypeOf(SAFEARRAY* array) { return static_cast<VARTYPE>(BlockOf(array)->type); }

std::size_t SizeOfData(const SAFEARRAY* array) {
  return std::size_t{array->rgsabound[0].cElements} * array->cbElements;
}

BSTR CopyOf(BSTR string) {
  return SysAllocStringByteLen(reinterpret_cast<const CHAR*>(string), SysStringByteLen(string));
}

// The place of an element, or null outside the bounds.
BYTE* Find(SAFEARRAY* array, LONG index) {
  const SAFEARRAYBOUND& bound = array->rgsabound[0];
  const LONGLONG offset = LONGLONG{index} - bound.lLbound;
  if (offset < 0 || offset >= bound.cElements) return nullptr;
  return static_cast<BYTE*>(array->pvData) + static_cast<std::size_t>(offset) * array->cbElements;
}

}  // namespace

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) {
  const ULONG size = SizeOfElement(type);
  if (size == 0) return nullptr;
  auto* block = static_cast<Block*>(std::calloc(1, sizeof(Block) + std::size_t{count} * size));
  if (block == nullptr) return nullptr;
  block->type = type;
  SAFEARRAY& array = block->array;
  array.cDims = 1;
  array.fFeatures = FADF_CREATEVECTOR | FADF_HAVEVARTYPE;
  if (type == VT_BSTR) array.fFeatures |= FADF_BSTR;
  array.cbElements = size;
  array.pvData = block + 1;
  array.rgsabound[0] = {count, lowerBound};
  return &array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (array == nullptr) return S_OK;
  if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
  if (TypeOf(array) == VT_BSTR) {
    auto* strings = static_cast<BSTR*>(array->pvData);
    for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i) SysFreeString(strings[i]);
  }
  std::free(BlockOf(array));
  return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  if (array == nullptr) return S_OK;
  const SAFEARRAYBOUND& bound = array->rgsabound[0];
  SAFEARRAY* copy = SafeArrayCreateVector(TypeOf(array), bound.lLbound, bound.cElements);
  if (copy == nullptr) return E_OUTOFMEMORY;
  if (TypeOf(array) != VT_BSTR) {
    std::memcpy(copy->pvData, array->pvData, SizeOfData(array));
  } else {
    auto* from = static_cast<BSTR*>(array->pvData);
    auto* to = static_cast<BSTR*>(copy->pvData);
    for (ULONG i = 0; i < bound.cElements; ++i) {
      if (from[i] == nullptr) continue;
      to[i] = CopyOf(from[i]);
      if (to[i] == nullptr) {
        SafeArrayDestroy(copy);
        return E_OUTOFMEMORY;
      }
    }
  }
  *out = copy;
  return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) { return array == nullptr ? 0 : array->cDims; }

UINT SafeArrayGetElemsize(SAFEARRAY* array) { return array == nullptr ? 0 : array->cbElements; }

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
  if (array == nullptr || type == nullptr) return E_INVALIDARG;
  *type = TypeOf(array);
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  if (dimension != 1) return DISP_E_BADINDEX;
  *bound = array->rgsabound[0].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  const HRESULT result = SafeArrayGetLBound(array, dimension, bound);
  if (FAILED(result)) return result;
  *bound = static_cast<LONG>(LONGLONG{*bound} + array->rgsabound[0].cElements - 1);
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (array == nullptr || data == nullptr) return E_INVALIDARG;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  if (array == nullptr) return E_INVALIDARG;
  if (array->cLocks == 0) return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* out) {
  if (array == nullptr || index == nullptr || out == nullptr) return E_INVALIDARG;
  BYTE* place = Find(array, *index);
  if (place == nullptr) return DISP_E_BADINDEX;
  if (TypeOf(array) != VT_BSTR) {
    std::memcpy(out, place, array->cbElements);
    return S_OK;
  }
  BSTR string = *reinterpret_cast<BSTR*>(place);
  BSTR copy = string == nullptr ? nullptr : CopyOf(string);
  if (copy == nullptr && string != nullptr) return E_OUTOFMEMORY;
  *static_cast<BSTR*>(out) = copy;
  return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* value) {
  if (array == nullptr || index == nullptr) return E_INVALIDARG;
  BYTE* place = Find(array, *index);
  if (place == nullptr) return DISP_E_BADINDEX;
  if (TypeOf(array) != VT_BSTR) {
    if (value == nullptr) return E_INVALIDARG;
    std::memcpy(place, value, array->cbElements);
    return S_OK;
  }
  BSTR copy = CopyOf(static_cast<BSTR>(value));
  if (copy == nullptr) return E_OUTOFMEMORY;
  BSTR& string = *reinterpret_cast<BSTR*>(place);
  SysFreeString(string);
  string = copy;
  return S_OK;
}
