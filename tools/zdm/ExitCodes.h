// How the command line ends, alike for every subcommand; docs/man/zdm.1 lists the codes.
#pragma once

#include "document/DocumentError.h"

#include <stdexcept>
#include <string>

namespace zdm::tool {

enum ExitCode : int {
  kDone = 0,
  kFailed = 1,       // none of the reasons below
  kUsage = 2,        // the command line was wrong
  kNotFound = 3,     // no such file or folder
  kNoAccess = 4,     // not readable, not writable, in use, or a folder
  kNotDocument = 5,  // another kind of file, or an empty one
  kNewerFormat = 6,  // written by a later version
  kDamaged = 7,      // a document whose bytes are not as saved
  kNoRoom = 8,       // the disk is full
  kNoMemory = 9,
  kNoObject = 10,   // the document has no valid object of that ID
  kRefused = 11,    // possible, and not done: something would be lost
  kUnsound = 12,    // done, and what was looked at has errors or losses
  kDifferent = 13,  // done, and what was compared is not the same
};

ExitCode ExitCodeOf(DocumentFault fault);

/// Ends a subcommand.
class Failure : public std::runtime_error {
 public:
  /// @param text  one line, for people.
  Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}

  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace zdm::tool
