// The stream forms of references, alone and in arrays.
#include "platform/core/IZStream.h"
#include "platform/geometry/SubID.h"
#include "platform/ole/CAtlException.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/identity/UID.h"

#include <memory>
#include <utility>

namespace {

constexpr ULONGLONG kSmallestRecord = 2;  // no CID, no SubID

}  // namespace

// UID record, little-endian.
//   offset  size  field
//        0     1  1 when a CID follows, else 0
//        1    12  CID record, when the byte is 1
//     1/13     n  SubID record (SaveSubID)
void UID::Save(IZStream* stream, IZDatabase*, bool withCID) const {
  const BYTE hasCID = withCID && CID != nullptr ? 1 : 0;
  stream->Write(&hasCID, sizeof(hasCID));
  if (hasCID == 1) CID->Save(stream);
  SaveSubID(stream, SubID);
}

void UID::Load(IZStream* stream, IZDatabase* db, bool) {
  UID read;
  BYTE hasCID = 0;
  stream->Read(&hasCID, sizeof(hasCID));
  if (hasCID == 1) {
    read.CID = new ::CID;
    read.CID->Load(stream, db != nullptr ? db->GetPIDManager() : nullptr,
                   db != nullptr ? db->GetOIDManager() : nullptr);
  }
  LoadSubID(stream, &read.SubID);
  std::swap(SubID, read.SubID);
  std::swap(CID, read.CID);
}

// Nullable UID: a flag, then the record when the flag is true.
void UID::SaveUID(const UID* uid, IZStream* stream, IZDatabase* db) {
  stream->WriteFlag(uid != nullptr);
  if (uid != nullptr) uid->Save(stream, db, true);
}

UID* UID::LoadUID(IZStream* stream, IZDatabase* db) {
  if (!stream->ReadFlag()) return nullptr;
  auto uid = std::make_unique<UID>();
  uid->Load(stream, db, true);
  return uid.release();
}

// Array: a count, then the records.
void UID::Save(const std::vector<UID*>& uids, IZStream* stream, IZDatabase* db, bool withCID) {
  stream->WriteCount(static_cast<LONG>(uids.size()));
  for (const UID* uid : uids) uid->Save(stream, db, withCID);
}

void UID::Load(std::vector<UID*>& uids, IZStream* stream, IZDatabase* db, bool withCID) {
  const LONG count = stream->ReadCount();
  if (count <= 0) return;
  if (stream->GetBytesLeft() / kSmallestRecord < static_cast<ULONGLONG>(count)) {
    throw CAtlException(E_FAIL);
  }
  for (LONG i = 0; i < count; ++i) {
    auto uid = std::make_unique<UID>();
    uid->Load(stream, db, withCID);
    uids.push_back(uid.get());
    static_cast<void>(uid.release());
  }
}
