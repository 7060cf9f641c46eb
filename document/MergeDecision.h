// What a merge does with an object of the source document.
#pragma once

namespace zdm {

enum class MergeDecision {
  kSame,     // its counterpart stands for it
  kReplace,  // its counterpart takes over its data
  kAdd,      // it is copied, under a new ID
  kDescend,  // its counterpart, a manager, stands for it and takes in its objects
  kLeaveOut  // nothing; references to it are cut
};

}  // namespace zdm
