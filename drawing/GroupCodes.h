// What the group codes of a drawing mean: the type of their value, and what they refer to.
#pragma once

#include "platform/ole/ole.h"

#include <string_view>

namespace zdm {

enum class GroupType { kText, kReal, kInteger, kFlag, kHandle, kBytes };

/// A code that is not known has text.
GroupType TypeOf(LONG code);

/// A handle that refers to another object.
enum class HandleKind { kNone, kSoft, kHard };
HandleKind HandleKindOf(LONG code);

constexpr LONG kTypeCode = 0;
constexpr LONG kNameCode = 2;
constexpr LONG kLayerCode = 8;
constexpr LONG kVariableCode = 9;
constexpr LONG kSubclassCode = 100;
constexpr LONG kBraceCode = 102;
constexpr LONG kCommentCode = 999;
constexpr LONG kFirstExtendedCode = 1000;
constexpr LONG kApplicationCode = 1001;

/// What the types of records say.
bool IsEntityPart(std::string_view type);  // VERTEX, SEQEND, ATTRIB: belong to another entity
bool IsDictionary(std::string_view type);
bool RefersToBlock(std::string_view type);  // by the name in group 2
bool ShowsBlock(std::string_view type);     // an insert or a dimension

/// What the names of blocks say, in any case.
bool IsModelSpace(std::string_view name);
bool IsPaperSpace(std::string_view name);
/// A block without a name that a user gave: the name may differ from file to file.
bool IsAnonymous(std::string_view name);

}  // namespace zdm
