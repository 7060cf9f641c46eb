#include "platform/system/Environment.h"

#include "platform/system/Text.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace zdm {
namespace {

#if defined(_WIN32)
std::optional<WideString> Find(const char* name) {
  const char* bytes = std::getenv(name);
  if (bytes == nullptr) return std::nullopt;
  const int length = static_cast<int>(std::strlen(bytes));
  WideString text(static_cast<std::size_t>(length), L'\0');  // never more units than bytes
  const int units = MultiByteToWideChar(CP_ACP, 0, bytes, length, text.data(), length);
  text.resize(static_cast<std::size_t>(units));
  return text;
}
#else
std::optional<WideString> Find(const char* name) {
  const char* bytes = std::getenv(name);
  if (bytes == nullptr) return std::nullopt;
  return FromUtf8(bytes);
}
#endif

}  // namespace

int GetEnvironment(std::size_t* required, OLECHAR* buffer, std::size_t capacity, const char* name) {
  if (required == nullptr) return EINVAL;
  *required = 0;
  if (name == nullptr || (buffer == nullptr && capacity != 0)) return EINVAL;
  if (capacity != 0) *buffer = 0;
  const std::optional<WideString> text = Find(name);
  if (!text) return 0;
  *required = text->size() + 1;
  if (buffer == nullptr) return 0;
  if (capacity < *required) return ERANGE;
  std::memcpy(buffer, text->c_str(), *required * sizeof(OLECHAR));
  return 0;
}

bool GetEnvironment(const char* name, CStringW& value) {
  if (name == nullptr) return false;
  const std::optional<WideString> text = Find(name);
  if (!text) return false;
  value = CStringW(*text);
  return true;
}

}  // namespace zdm
