// The groups of a text, two lines each: the code, then the value. Line ends may be LF, CRLF or CR.
// What is no group code costs its line, so that reading comes back into step.
#pragma once

#include "drawing/GroupList.h"
#include "drawing/Warnings.h"

namespace zdm {

/// Without blanks at both ends.
std::string_view Trimmed(std::string_view text);

class GroupReader {
 public:
  /// @param bytes     borrowed, as all texts read.
  /// @param warnings  may be null.
  explicit GroupReader(std::string_view bytes, Warnings* warnings = nullptr);

  /// False at the end.
  bool Next(Group& group);
  /// Of the code of the group read last, from 1.
  ULONG Line() const { return line_ - 1; }
  bool HasCrlf() const { return hasCrlf_; }

 private:
  bool NextLine(std::string_view& line);
  void Warn(WarningCode code, ULONG line, std::string_view subject);

  std::string_view rest_;
  char lineEnd_;
  bool hasCrlf_ = false;
  ULONG line_ = 0;  // lines read
  Warnings* warnings_;
};

}  // namespace zdm
