#include "platform/system/CodePage.h"

#include <algorithm>
#include <limits>

#if !defined(_WIN32)
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <memory>
#include <string>
#endif

namespace zdm {
namespace {

/// Such text is the same in every code page.
template <class Text>
bool IsAscii(const Text& text) {
  return std::ranges::all_of(text, [](auto unit) { return unit > 0 && unit < 0x80; });
}

WideString FromLatin1(std::string_view bytes) {
  WideString text;
  text.reserve(bytes.size());
  for (const char byte : bytes) text += static_cast<OLECHAR>(static_cast<unsigned char>(byte));
  return text;
}

/// What the system's functions take at once.
bool FitsInt(std::size_t size) {
  return size < static_cast<std::size_t>(std::numeric_limits<int>::max()) / 8;
}

#if defined(_WIN32)

std::optional<WideString> Decode(std::string_view bytes, unsigned codePage) {
  const int size = static_cast<int>(bytes.size());
  const int units = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
  if (units == 0) return std::nullopt;
  WideString text(static_cast<std::size_t>(units), 0);
  MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), units);
  return text;
}

std::optional<std::string> Encode(WideView text, unsigned codePage) {
  const int size = static_cast<int>(text.size());
  BOOL replaced = FALSE;
  const int count = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, text.data(), size, nullptr,
                                        0, nullptr, &replaced);
  if (count == 0 || replaced) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(count), 0);
  WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, text.data(), size, bytes.data(), count,
                      nullptr, nullptr);
  return bytes;
}

bool IsKnown(unsigned codePage) { return IsValidCodePage(codePage) != FALSE; }

#else

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

Converter OpenConverter(unsigned codePage) {
  const std::string number = std::to_string(codePage);
  std::string names[] = {"windows-" + number, "cp" + number, "ibm-" + number};
  if (codePage == 10000) names[0] = "macintosh";
  if (codePage >= 28591 && codePage <= 28605) {
    names[0] = "ISO-8859-" + std::to_string(codePage - 28590);
  }
  for (const std::string& name : names) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.c_str(), &status));
    if (U_SUCCESS(status) && converter != nullptr) return converter;
  }
  return nullptr;
}

/// The one used last stays open: a file has one code page.
UConverter* ConverterOf(unsigned codePage) {
  thread_local unsigned last = 0;
  thread_local Converter converter;
  if (codePage != last) {
    converter = OpenConverter(codePage);
    last = codePage;
  }
  return converter.get();
}

std::optional<WideString> Decode(std::string_view bytes, unsigned codePage) {
  UConverter* converter = ConverterOf(codePage);
  if (converter == nullptr) return std::nullopt;
  WideString text(bytes.size() * 2, 0);
  UErrorCode status = U_ZERO_ERROR;
  const int32_t units = ucnv_toUChars(converter, text.data(), static_cast<int32_t>(text.size()),
                                      bytes.data(), static_cast<int32_t>(bytes.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  text.resize(static_cast<std::size_t>(units));
  return text;
}

std::optional<std::string> Encode(WideView text, unsigned codePage) {
  UConverter* converter = ConverterOf(codePage);
  if (converter == nullptr) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  std::string bytes(text.size() * 8, 0);
  const int32_t count = ucnv_fromUChars(converter, bytes.data(), static_cast<int32_t>(bytes.size()),
                                        text.data(), static_cast<int32_t>(text.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(count));
  return bytes;
}

bool IsKnown(unsigned codePage) { return ConverterOf(codePage) != nullptr; }

#endif

}  // namespace

bool IsCodePageKnown(unsigned codePage) {
  return codePage == kUtf8CodePage || codePage == kLatin1CodePage || IsKnown(codePage);
}

WideString FromCodePage(std::string_view bytes, unsigned codePage) {
  if (codePage == kUtf8CodePage) return FromUtf8(bytes);
  if (codePage == kLatin1CodePage || IsAscii(bytes) || !FitsInt(bytes.size())) {
    return FromLatin1(bytes);
  }
  const std::optional<WideString> text = Decode(bytes, codePage);
  return text ? *text : FromLatin1(bytes);
}

std::optional<std::string> ToCodePage(WideView text, unsigned codePage) {
  if (codePage == kUtf8CodePage || IsAscii(text)) return ToUtf8(text);
  if (codePage == kLatin1CodePage) {
    if (std::ranges::any_of(text, [](OLECHAR unit) { return unit > 0xFF; })) return std::nullopt;
    std::string bytes;
    for (const OLECHAR unit : text) bytes += static_cast<char>(unit);
    return bytes;
  }
  return FitsInt(text.size()) ? Encode(text, codePage) : std::nullopt;
}

}  // namespace zdm
