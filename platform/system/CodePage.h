// Text in the code pages of older files, by their Windows numbers (1252, 936, 65001 for UTF-8 …).
#pragma once

#include "platform/system/Text.h"

#include <optional>

namespace zdm {

constexpr unsigned kUtf8CodePage = 65001;
constexpr unsigned kLatin1CodePage = 28591;

/// The system can convert from and to that code page.
ZDM_API bool IsCodePageKnown(unsigned codePage);

/// UTF-16 of `bytes`; what is no character of the code page becomes U+FFFD. A code page that is not
/// known is read as Latin-1.
ZDM_API WideString FromCodePage(std::string_view bytes, unsigned codePage);

/// `text` in the code page; no value when the page is not known or lacks one of the characters.
ZDM_API std::optional<std::string> ToCodePage(WideView text, unsigned codePage);

}  // namespace zdm
