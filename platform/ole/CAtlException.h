// The one exception of the library: misuse of list positions, failed allocation, damaged bytes.
#pragma once

#include "platform/ole/ole.h"

class ZDM_INTERFACE CAtlException {
 public:
  explicit CAtlException(HRESULT result = E_FAIL) : m_hr(result) {}
  operator HRESULT() const { return m_hr; }

  HRESULT m_hr;  ///< E_FAIL for misuse and damage, E_OUTOFMEMORY for a failed allocation
};
