// The result code that a call throws.
#pragma once

#include "platform/ole/CAtlException.h"

namespace zdm::test {

/// S_OK when `call` throws no CAtlException.
template <class Call>
HRESULT Thrown(Call call) {
  try {
    call();
  } catch (const CAtlException& failure) {
    return failure;
  }
  return S_OK;
}

}  // namespace zdm::test
