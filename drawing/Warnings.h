// What an import found that was not as it should be. Nothing of it stops an import.
#pragma once

#include "platform/ole/ole.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zdm {

enum class WarningCode {
  kCodeUnreadable,    // a line where a group code belongs is no number; the line is passed over
  kCodeOutOfRange,    // a group code below -5 or above 1071; kept
  kCutOff,            // the file ends after a group code
  kNoEnd,             // no EOF
  kAfterEnd,          // something stands after EOF; kept
  kSectionUnclosed,   // a section without ENDSEC
  kTableUnclosed,     // a table without ENDTAB
  kBlockUnclosed,     // a block without ENDBLK
  kOutsideSection,    // records between sections; kept
  kUnknownCodePage,   // the text is read as Latin-1
  kLongText,          // a text of more than 64 Ki units; kept, and no parameter
  kDecimalComma,      // a number written with a comma; read as with a point
  kBadNumber,         // a value that is no number where one belongs; kept, and no parameter
  kUndefinedLayer,    // an entity on a layer that no table defines
  kMissingBlock,      // an insert or a dimension of a block that is not there
  kDoubledBlock,      // a second block of one name; the first counts
  kBlockCycle,        // blocks that insert each other; such paths end where they come back
  kTooManyPaths,      // not all paths of nested inserts are pooled
  kDoubledHandle,     // a handle used twice; references lead to the first
  kUnresolvedHandle,  // a reference to a handle that nothing has
  kDifferentBlock,    // merged: a block of that name with another content is there, and stays
  kDifferentVersion,  // merged: the file has another version than the drawing
  kSectionKept,       // merged: a section that has no names to merge by; the present one stays
};

constexpr std::size_t kWarningCodes = 23;

/// The stable name of a code, such as "layer-undefined".
const char* NameOf(WarningCode code);

struct Warning {
  WarningCode code;
  ULONG count = 0;      // how often
  ULONG line = 0;       // in the file, of the first; 0 for the file as a whole
  std::string subject;  // what the first is about: bytes of the file, at most 80
};

/// One warning a code, however often it occurs.
class Warnings {
 public:
  void Add(WarningCode code, ULONG line, std::string_view subject = {});
  /// In the order of the codes.
  std::vector<Warning> All() const;
  bool IsEmpty() const { return All().empty(); }

 private:
  std::array<Warning, kWarningCodes> byCode_;
};

}  // namespace zdm
