#include "tools/zdm/ExitCodes.h"

namespace zdm::tool {

ExitCode ExitCodeOf(DocumentFault fault) {
  switch (fault) {
    case DocumentFault::kNotFound:
      return kNotFound;
    case DocumentFault::kNoAccess:
      return kNoAccess;
    case DocumentFault::kNotDocument:
      return kNotDocument;
    case DocumentFault::kNewerFormat:
      return kNewerFormat;
    case DocumentFault::kDamaged:
      return kDamaged;
    case DocumentFault::kNoRoom:
      return kNoRoom;
    case DocumentFault::kNoMemory:
      return kNoMemory;
    case DocumentFault::kFailed:
      break;
  }
  return kFailed;
}

}  // namespace zdm::tool
