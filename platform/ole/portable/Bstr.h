// BSTR: 16-bit text that carries its length in bytes in the four bytes before its first unit and a
// zero unit after its last. It may hold zeros and an odd number of bytes; null stands for no text
// and has length 0. One owner, who frees it with SysFreeString.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/StringCompare.h"
#include "platform/ole/portable/Types.h"

#include <cstring>

/// A copy of zero-terminated `text`; null for null and when memory runs out.
ZDM_API BSTR SysAllocString(const OLECHAR* text);
/// A string of `length` units copied from `text`, zeros included; null `text`: zeros.
ZDM_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// A string of `length` bytes, odd lengths included, copied from `bytes`; null `bytes`: zeros.
ZDM_API BSTR SysAllocStringByteLen(const CHAR* bytes, UINT length);
/// Replaces `*string` by a copy of `text`, which may lie inside it; null `text` leaves null.
/// @return FALSE when `string` is null or memory runs out; `*string` is then unchanged.
ZDM_API INT SysReAllocString(BSTR* string, const OLECHAR* text);
/// Replaces `*string` by `length` units of `text`, which may lie inside it; null `text` keeps the
/// units that were there, zeros after them.
/// @return FALSE when `string` is null or memory runs out; `*string` is then unchanged.
ZDM_API INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length);
/// Null does nothing.
ZDM_API void SysFreeString(BSTR string);

inline UINT SysStringByteLen(BSTR string) {
  if (string == nullptr) return 0;
  UINT length;
  std::memcpy(&length, reinterpret_cast<const BYTE*>(string) - sizeof(length), sizeof(length));
  return length;
}

/// Whole units: an odd last byte is not counted.
inline UINT SysStringLen(BSTR string) { return SysStringByteLen(string) / UINT{sizeof(OLECHAR)}; }
