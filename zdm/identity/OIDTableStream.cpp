// The stored ID table.
#include "platform/core/IZStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"

#include <memory>

// ID table, 4 + 12n bytes, little-endian: the records that are valid and have an object.
//   offset  size  field
//        0     4  number n of records
//        4    12  n OID entries, in table order; their first word is read back as AuxWord1
void COIDManager::Save(IZStream* stream) {
  const LONG count = GetValidOIDCount();
  stream->Write(&count, sizeof(count));
  for (OID* oid : GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) oid->Save(stream);
  }
}

bool COIDManager::Load(IZStream* stream) {
  LONG count = 0;
  bool isComplete = false;
  stream->Read(&count, sizeof(count), &isComplete);
  Settle();
  LONG read = 0;
  for (; isComplete && read < count; ++read) {
    LONG words[3];
    stream->Read(words, sizeof(words), &isComplete);
    if (!isComplete) break;
    auto oid = std::make_unique<OID>(words[0], words[1], words[2], nullptr);
    AddOID(oid.get());
    static_cast<void>(oid.release());  // the table keeps it
  }
  SetIDRange();
  if (ProgressMeter != nullptr && !OIDVect.empty()) {
    ProgressMeter->SetRange(static_cast<LONG>(OIDVect.size()));
  }
  return isComplete && read == count;
}
