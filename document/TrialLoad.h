// Whether bytes can be loaded as an object's record, tried on an object that goes away again, in a
// document of its own.
#pragma once

#include "document/CZDocument.h"

#include <cstddef>
#include <span>

namespace zdm {

class TrialLoad {
 public:
  /// How many of the bytes the object of the record at their beginning reads; 0 when its class is
  /// not there or it cannot be loaded.
  std::size_t Length(std::span<const BYTE> bytes);

 private:
  ZRefPtr<CZDocument> document_;
  int trials_ = 0;
};

}  // namespace zdm
