#include "platform/system/TextResource.h"

std::optional<zdm::WideString> zdm::LoadTextResource([[maybe_unused]] USHORT number) {
#if defined(_WIN32)
  HMODULE library = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<const WCHAR*>(&LoadTextResource), &library)) {
    return std::nullopt;
  }
  // With a length of 0 the answer is the address of the text in the library, not terminated.
  const WCHAR* text = nullptr;
  const int length = LoadStringW(library, number, reinterpret_cast<WCHAR*>(&text), 0);
  if (length > 0) return WideString(text, static_cast<std::size_t>(length));
#endif
  return std::nullopt;
}
