// File operations that fail, fall short or end the process. A program that links FailingFiles.cpp
// has them in place of the C library's, also inside the libraries that it uses.
#pragma once

#include <string>

namespace zdm::test {

enum class FileFault {
  kNone,
  kFails,  // with the error number that was given
  kShort,  // half of what it should be is read or written; a writer is told so, as by a full disk
  kKills,  // the process is gone, with half of a write on the disk
};

/// From now on operations are counted: the one after `left` others meets the fault.
void ArmFiles(FileFault fault, int left, int error = 0);
/// What was done since, a letter each: i read, w write, f flush of a buffer, s flush to the disk,
/// c close, r rename.
std::string DisarmFiles();

}  // namespace zdm::test
