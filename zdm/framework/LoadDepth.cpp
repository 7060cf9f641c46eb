#include "zdm/framework/LoadDepth.h"

#include "platform/ole/CAtlException.h"

namespace {

int depth = 0;

}  // namespace

zdm::LoadDepth::LoadDepth() {
  if (depth >= kMax) throw CAtlException(E_FAIL);
  ++depth;
}

zdm::LoadDepth::~LoadDepth() { --depth; }
