#include "platform/ole/VariantStream.h"

#include "platform/ole/Variant.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace zdm {
namespace {

static_assert(std::endian::native == std::endian::little, "values are written as they lie");

/// Bytes of a value that is stored as it is; 0 for the other types.
ULONG PlainSize(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_I8:
    case VT_UI8:
      return 8;
    default:
      return 0;
  }
}

HRESULT Write(IStream* stream, const void* data, ULONG size) {
  ULONG written = 0;
  const HRESULT result = stream->Write(data, size, &written);
  if (FAILED(result)) return result;
  return written == size ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT Read(IStream* stream, void* data, ULONG size) {
  ULONG read = 0;
  const HRESULT result = stream->Read(data, size, &read);
  if (FAILED(result)) return result;
  return read == size ? S_OK : E_FAIL;
}

HRESULT Seek(IStream* stream, ULONGLONG offset, DWORD origin, ULONGLONG* position) {
  LARGE_INTEGER move;
  move.QuadPart = static_cast<LONGLONG>(offset);
  ULARGE_INTEGER reached = {};
  const HRESULT result = stream->Seek(move, origin, &reached);
  *position = reached.QuadPart;
  return result;
}

/// Bytes between the position, which stays, and the end.
HRESULT BytesLeft(IStream* stream, ULONGLONG* left) {
  ULONGLONG position = 0;
  HRESULT result = Seek(stream, 0, STREAM_SEEK_CUR, &position);
  if (FAILED(result)) return result;
  ULONGLONG end = 0;
  STATSTG stat = {};
  if (SUCCEEDED(stream->Stat(&stat, STATFLAG_NONAME))) {
    end = stat.cbSize.QuadPart;
  } else {  // a stream need not know more than its bytes
    result = Seek(stream, 0, STREAM_SEEK_END, &end);
    if (FAILED(result)) return result;
    ULONGLONG back = 0;
    result = Seek(stream, position, STREAM_SEEK_SET, &back);
    if (FAILED(result)) return result;
  }
  *left = end > position ? end - position : 0;
  return S_OK;
}

/// Type and text of `units` units; null `text` is none.
HRESULT WriteText(IStream* stream, VARTYPE type, const OLECHAR* text, ULONG units) {
  constexpr ULONG kUnit = sizeof(OLECHAR);
  const ULONG length = text != nullptr ? (units + 1) * kUnit : 0;
  BYTE header[sizeof type + sizeof length];
  std::memcpy(header, &type, sizeof type);
  std::memcpy(header + sizeof type, &length, sizeof length);
  HRESULT result = Write(stream, header, sizeof header);
  if (FAILED(result) || text == nullptr) return result;
  if (units > 0) result = Write(stream, text, units * kUnit);
  if (FAILED(result)) return result;
  constexpr OLECHAR kTerminator = 0;
  return Write(stream, &kTerminator, kUnit);
}

/// Stores a text, or null, in `*out`.
HRESULT ReadText(IStream* stream, BSTR* out) {
  constexpr ULONG kUnit = sizeof(OLECHAR);
  ULONG length = 0;
  HRESULT result = Read(stream, &length, sizeof length);
  if (FAILED(result) || length == 0) return result;
  if (length % kUnit != 0) return E_FAIL;
  ULONGLONG left = 0;
  result = BytesLeft(stream, &left);
  if (FAILED(result)) return result;
  if (length > left) return E_FAIL;
  *out = SysAllocStringLen(nullptr, length / kUnit - 1);
  if (*out == nullptr) return E_OUTOFMEMORY;
  if (length > kUnit) result = Read(stream, *out, length - kUnit);
  if (FAILED(result)) return result;
  OLECHAR terminator = 0;
  return Read(stream, &terminator, sizeof terminator);
}

/// Systems differ in whether a number ends there.
bool HoldsZero(BSTR text) {
  return std::basic_string_view<OLECHAR>(text, SysStringLen(text)).find(OLECHAR{0}) !=
         std::basic_string_view<OLECHAR>::npos;
}

HRESULT ReadValue(IStream* stream, Variant* value) {
  VARIANT read = {};  // whole: older systems' VariantInit leaves the value as it was
  VARTYPE type = VT_EMPTY;
  HRESULT result = Read(stream, &type, sizeof type);
  if (FAILED(result)) return result;
  if (const ULONG size = PlainSize(type); size > 0) {
    result = Read(stream, &read.llVal, size);
    read.vt = type;
    value->Attach(read);
    return result;
  }
  switch (type) {
    case VT_UNKNOWN:
    case VT_DISPATCH: {
      CLSID clsid = {};
      result = Read(stream, &clsid, sizeof clsid);
      if (FAILED(result)) return result;
      if (!(clsid == CLSID_NULL)) return E_FAIL;
      read.vt = type;
      value->Attach(read);
      return S_OK;
    }
    case VT_EMPTY:
    case VT_NULL:
    case VT_BSTR:
    case VT_DECIMAL: {
      read.vt = VT_BSTR;
      result = ReadText(stream, &read.bstrVal);
      value->Attach(read);
      if (FAILED(result) || type == VT_BSTR) return result;
      if (type == VT_DECIMAL && HoldsZero(value->Get().bstrVal)) return E_FAIL;
      return SUCCEEDED(value->ChangeType(type)) ? S_OK : E_FAIL;
    }
    default:
      return E_FAIL;
  }
}

}  // namespace

// VARIANT, little-endian.
//   offset  size  field
//        0     2  type
//        2     1  value of VT_I1, VT_UI1
//        2     2  value of VT_I2, VT_UI2, VT_BOOL
//        2     4  value of VT_I4, VT_UI4, VT_INT, VT_UINT, VT_R4, VT_ERROR
//        2     8  value of VT_R8, VT_CY, VT_DATE, VT_I8, VT_UI8
//        2    16  class id of VT_UNKNOWN, VT_DISPATCH: zeros
//        2     4  VT_BSTR, VT_DECIMAL, VT_EMPTY, VT_NULL: length of the text in bytes, its two-byte
//                 terminator included: 0 for null, 2 for empty
//        6     n  the text in UTF-16 and its terminator; empty for VT_EMPTY and VT_NULL
// A DECIMAL is written as digits of the invariant locale: "-0.5".
HRESULT WriteVariant(IStream* stream, const VARIANT& value) {
  if (const ULONG size = PlainSize(value.vt); size > 0) {
    BYTE record[sizeof value.vt + 8];
    std::memcpy(record, &value.vt, sizeof value.vt);
    std::memcpy(record + sizeof value.vt, &value.llVal, size);
    return Write(stream, record, sizeof value.vt + size);
  }
  switch (value.vt) {
    case VT_UNKNOWN:
    case VT_DISPATCH: {
      BYTE record[sizeof value.vt + sizeof(CLSID)] = {};
      std::memcpy(record, &value.vt, sizeof value.vt);
      return Write(stream, record, sizeof record);
    }
    case VT_BSTR:
      return WriteText(stream, VT_BSTR, value.bstrVal, SysStringLen(value.bstrVal));
    case VT_DECIMAL: {
      if (!IsSound(value.decVal)) return WriteText(stream, VT_EMPTY, OLESTR(""), 0);
      Variant text;
      const HRESULT result = ConvertVariant(text.Out(), value, VT_BSTR);
      if (FAILED(result)) return result;
      const VARIANT& digits = text.Get();
      return WriteText(stream, VT_DECIMAL, digits.bstrVal, SysStringLen(digits.bstrVal));
    }
    case VT_NULL:
      return WriteText(stream, VT_NULL, OLESTR(""), 0);
    default:
      return WriteText(stream, VT_EMPTY, OLESTR(""), 0);
  }
}

HRESULT ReadVariant(IStream* stream, VARIANT* value) {
  HRESULT result = VariantClear(value);
  if (FAILED(result)) return result;
  Variant read;
  result = ReadValue(stream, &read);
  if (SUCCEEDED(result)) *value = read.Detach();
  return result;
}

}  // namespace zdm
