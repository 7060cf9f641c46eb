// Counts how deeply the records being loaded are nested, over all kinds of records, so that a
// hostile stream cannot use up the stack. Each Load that may lead to another one begins with
//   const zdm::LoadDepth nested;
#pragma once

#include "platform/Export.h"

namespace zdm {

class ZDM_API LoadDepth {
 public:
  static constexpr int kMax = 256;

  /// Throws CAtlException(E_FAIL) when kMax records are being loaded already.
  LoadDepth();
  ~LoadDepth();
  LoadDepth(const LoadDepth&) = delete;
  LoadDepth& operator=(const LoadDepth&) = delete;
};

}  // namespace zdm
