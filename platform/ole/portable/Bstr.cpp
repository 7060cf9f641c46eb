#include "platform/ole/portable/Bstr.h"

#include <algorithm>
#include <new>
#include <string>

namespace {

// Block: 4 unused bytes, the length, the text, its terminator (a whole zero unit past an odd byte).
constexpr std::size_t kLengthOffset = 4;
constexpr std::size_t kTextOffset = 8;  // keeps the text aligned to 8 bytes
constexpr UINT kMaxBytes = 0x7FFFFFF0;

BSTR Allocate(const void* bytes, std::size_t length) {
  if (length > kMaxBytes) return nullptr;
  const std::size_t terminator = sizeof(OLECHAR) + length % sizeof(OLECHAR);
  const std::size_t size = kTextOffset + length + terminator;
  auto* block = static_cast<BYTE*>(::operator new(size, std::nothrow));
  if (block == nullptr) return nullptr;
  const auto stored = static_cast<UINT>(length);
  std::memcpy(block + kLengthOffset, &stored, sizeof(stored));
  BYTE* text = block + kTextOffset;
  if (bytes != nullptr) {
    std::memcpy(text, bytes, length);
    std::memset(text + length, 0, terminator);
  } else {
    std::memset(text, 0, length + terminator);
  }
  return reinterpret_cast<BSTR>(text);
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr) return nullptr;
  return Allocate(text, std::char_traits<OLECHAR>::length(text) * sizeof(OLECHAR));
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  return Allocate(text, std::size_t{length} * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(const CHAR* bytes, UINT length) { return Allocate(bytes, length); }

INT SysReAllocString(BSTR* string, const OLECHAR* text) {
  if (string == nullptr) return FALSE;
  BSTR copy = SysAllocString(text);
  if (copy == nullptr && text != nullptr) return FALSE;
  SysFreeString(*string);
  *string = copy;
  return TRUE;
}

INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length) {
  if (string == nullptr) return FALSE;
  BSTR copy = SysAllocStringLen(text, length);
  if (copy == nullptr) return FALSE;
  const UINT kept = text == nullptr ? std::min(SysStringLen(*string), length) : 0;
  if (kept != 0) std::memcpy(copy, *string, kept * sizeof(OLECHAR));
  SysFreeString(*string);
  *string = copy;
  return TRUE;
}

void SysFreeString(BSTR string) {
  if (string != nullptr) ::operator delete(reinterpret_cast<BYTE*>(string) - kTextOffset);
}
