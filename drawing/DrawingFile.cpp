#include "drawing/DrawingFile.h"

#include "document/DocumentError.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace zdm {

namespace {

constexpr std::string_view kFirstUtf8Version = "AC1021";

bool IsHex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool HasEscape(std::string_view bytes) {
  constexpr std::string_view kEscape = "\\U+";
  constexpr std::size_t kDigits = 4;
  for (std::size_t at = bytes.find(kEscape); at != std::string_view::npos;
       at = bytes.find(kEscape, at + 1)) {
    const std::string_view digits = bytes.substr(at + kEscape.size(), kDigits);
    if (digits.size() == kDigits && std::ranges::all_of(digits, IsHex)) return true;
  }
  return false;
}

/// Nothing had to be replaced when it was read as UTF-8.
bool IsUtf8(std::string_view bytes) { return ToUtf8(FromUtf8(bytes)) == bytes; }

std::string TextKind(std::string_view bytes) {
  std::string kind = "ascii";
  if (std::ranges::any_of(bytes, [](char c) { return (c & 0x80) != 0; })) {
    kind = IsUtf8(bytes) ? "utf-8" : "8-bit";
  }
  return HasEscape(bytes) ? kind + "+\\U" : kind;
}

bool IsBinaryForm(std::string_view bytes) {
  constexpr std::string_view kMark("\r\n\x1A\0", 4);
  constexpr std::size_t kPlace = 18;
  return bytes.size() > kPlace && bytes.substr(kPlace).starts_with(kMark);
}

bool IsDwg(std::string_view bytes) {
  constexpr std::size_t kVersion = 6;
  return bytes.size() > kVersion && bytes.starts_with("AC") &&
         static_cast<unsigned char>(bytes[kVersion]) < ' ' && bytes[kVersion] != '\r' &&
         bytes[kVersion] != '\n';
}

[[noreturn]] void Refuse(const std::string& name, const char* why) {
  throw DocumentError(DocumentFault::kNotDocument, E_FAIL, name + ": " + why);
}

/// The values of the two variables of the header, and whether there is a section at all.
bool ReadVariables(std::string_view bytes, DrawingSource* source) {
  GroupReader reader(bytes);
  bool hasSection = false;
  std::string* wanted = nullptr;
  for (Group group; reader.Next(group);) {
    const std::string_view text = Trimmed(group.text);
    if (wanted != nullptr && wanted->empty()) *wanted = text;
    wanted = nullptr;
    if (group.code == kVariableCode) {
      if (text == "$ACADVER") wanted = &source->version;
      if (text == "$DWGCODEPAGE") wanted = &source->codePage;
    }
    hasSection = hasSection || (group.code == kTypeCode && text == "SECTION");
  }
  source->hasCrlf = reader.HasCrlf();
  return hasSection;
}

TextCodec CodecOf(const DrawingSource& source, std::string_view codePage, Warnings* warnings) {
  if (source.version.starts_with("AC1") && source.version >= kFirstUtf8Version)
    return {kUtf8CodePage};
  const std::string_view name = source.codePage.empty() ? codePage : source.codePage;
  if (name.empty()) return {kLatin1CodePage};
  const std::optional<unsigned> number = CodePageOf(name);
  if (number && IsCodePageKnown(*number)) return {*number};
  warnings->Add(WarningCode::kUnknownCodePage, 0, name);
  return {kLatin1CodePage};
}

}  // namespace

std::string ReadFile(const std::filesystem::path& path) {
  const std::u8string u8 = path.u8string();
  const std::string name(u8.begin(), u8.end());
  std::error_code failed;
  if (!std::filesystem::exists(path, failed)) {
    throw DocumentError(DocumentFault::kNotFound, E_FAIL, name + ": no such file");
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes;
  if (std::filesystem::is_directory(path, failed) || !file) {
    throw DocumentError(DocumentFault::kNoAccess, E_FAIL, name + ": cannot be read");
  }
  bytes.resize(static_cast<std::size_t>(std::filesystem::file_size(path, failed)));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

FileFacts LookAt(std::string_view bytes, const std::string& name, std::string_view codePage,
                 Warnings* warnings) {
  if (IsBinaryForm(bytes)) Refuse(name, "a binary DXF file; only ASCII DXF can be read");
  if (IsDwg(bytes)) Refuse(name, "a DWG file; only ASCII DXF can be read");
  FileFacts facts;
  if (!ReadVariables(bytes, &facts.source)) Refuse(name, "not an ASCII DXF file");
  facts.source.name = name;
  facts.source.text = TextKind(bytes);
  facts.source.bytes = bytes.size();
  facts.codec = CodecOf(facts.source, codePage, warnings);
  return facts;
}

}  // namespace zdm
