#include "zdm/identity/COuterPIDManager.h"

#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"

#include <memory>

COuterPIDManager::~COuterPIDManager() {
  for (OID* record : GetOIDs()) {
    IZDMObject* object = record->Object;
    if (!Keeps(record) || object == nullptr || object->GetOID() != record) continue;
    auto own = std::make_unique<OID>(*record);
    object->SetOID(own.release(), false);
  }
  ReleaseRecords();
}
