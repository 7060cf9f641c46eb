// The text of a drawing between the bytes of its file and what is shown: its code page, and escapes
// such as \U+00B0 for characters that the code page lacks.
#pragma once

#include "platform/system/CodePage.h"

#include <optional>

namespace zdm {

/// The number of the code page that a drawing or a command line names, such as ANSI_1252,
/// ISO8859-1, MAC-ROMAN, GBK; in either case. No value for a name that means none.
std::optional<unsigned> CodePageOf(std::string_view name);

struct TextCodec {
  unsigned codePage = kLatin1CodePage;

  /// What `bytes` show, up to the first zero.
  WideString Show(std::string_view bytes) const;
  /// The bytes of `text` on one line: escapes for what the code page lacks and ^J, ^M for line
  /// ends.
  std::string Write(WideView text) const;

  bool operator==(const TextCodec&) const = default;
};

/// Names of layers, blocks, tables are equal when these are: lower case.
WideString NameKey(WideView name);

}  // namespace zdm
