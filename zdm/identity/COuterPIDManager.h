// An ID table for IDs that belong to no object of its own document. It owns its records: when it
// goes, an object still bound to one gets a record of its own with the same content.
#pragma once

#include "zdm/identity/COIDManager.h"

class ZDM_API COuterPIDManager : public COIDManager {
 public:
  COuterPIDManager() = default;
  COuterPIDManager(const COuterPIDManager&) = default;
  COuterPIDManager& operator=(const COuterPIDManager&) = default;
  ~COuterPIDManager() override;
};
