#include "zdm/model/CZDMDictionary.h"

#include "zdm/identity/ObjectOptions.h"

ZDM_OBJECT_BODY(CZDMDictionary)

CZDMDictionary::CZDMDictionary() {
  ClearOptionAllowed(zdm::kKeptWhileReferenced | zdm::kReferencesCount);
}
