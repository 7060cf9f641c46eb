// Identifiers of the host's classes that the library creates; see README.md.
#pragma once

#include "zdm/framework/ZClass.h"

namespace zdm {

/// The plain single-target relation: IZSingleReltn.
inline constexpr GUID kPlainReltnClass = ParseGuid("69F8E456-23A8-4BF9-A765-5CCF27951F72");
/// The display attribute: IZDispAttrib.
inline constexpr GUID kDispAttribClass = ParseGuid("040E8670-86C5-4DBD-89BB-53B6FABCE68A");
/// The display attribute by category: IZCategoryDispAttrib.
inline constexpr GUID kCategoryDispAttribClass = ParseGuid("8D9C4060-4B83-4380-AB79-C6152E3655EF");
/// The path of nested references: IZOptPath.
inline constexpr GUID kOptPathClass = ParseGuid("1DB813D4-9E9D-4FC6-A01B-014C44778E4B");

}  // namespace zdm
