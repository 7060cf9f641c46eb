#include "zdm/identity/OID.h"

#include "platform/core/ChangeWatch.h"
#include "platform/core/IZStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/model/IZDMObject.h"

#include <stdexcept>

std::bitset<64> OID::c_ObjStatusLock;
ULONGLONG OID::c_ObjStatusKey[64] = {};

namespace {

struct Entry {
  LONG aux1;
  LONG aux2;
  LONG id;
};
static_assert(sizeof(Entry) == 12, "entries are written as they lie");

std::size_t BitOf(LONG status) {
  if (status < 0 || status > 63) throw std::out_of_range("invalid bitset<N> position");
  return static_cast<std::size_t>(status);
}

}  // namespace

OID::OID() = default;

OID::OID(const LONG& aux1, const LONG& aux2, const LONG& id, IZDMObject* object)
    : KID(id), AuxWord1(aux1), AuxWord2(aux2), Object(object) {}

OID::OID(const OID& other)
    : KID(other),
      AuxWord1(other.AuxWord1),
      AuxWord2(other.AuxWord2),
      Status(other.Status),
      OptionAllowed(other.OptionAllowed),
      Object(other.Object) {}

OID& OID::operator=(const OID& other) {
  if (this == &other) return *this;
  KID::operator=(other);
  AuxWord1 = other.AuxWord1;
  AuxWord2 = other.AuxWord2;
  Status = other.Status;
  OptionAllowed = other.OptionAllowed;
  Object = other.Object;
  return *this;
}

/// Whether the object counts is part of what is remembered of it. Only a record that a table keeps
/// is sure to know when its object ends.
void OID::TakeStatus(LONG status, bool set) {
  Status.set(BitOf(status), set);
  if (status != ZOS_VALID || table_ == nullptr || Object == nullptr) return;
  zdm::ChangeWatch::Changed(*Object);
}

void OID::SetStatus(const LONG& status, ULONGLONG) { TakeStatus(status, true); }
void OID::ClearStatus(const LONG& status, ULONGLONG) { TakeStatus(status, false); }
bool OID::JudgeStatus(LONG status) const { return Status.test(BitOf(status)); }

// OID entry, 12 bytes, little-endian.
//   offset  size  field
//        0     4  0 (read back as AuxWord1 by ID tables only)
//        4     4  AuxWord2
//        8     4  ID, signed
void OID::Save(IZStream* stream) {
  const Entry entry = {0, AuxWord2, ID};
  stream->Write(&entry, sizeof(entry));
}

void OID::Load(IZStream* stream) {
  Entry entry;
  stream->Read(&entry, sizeof(entry));
  AuxWord2 = entry.aux2;
  ID = entry.id;
}

OID* OID::Take(OID* record) {
  if (record != nullptr) ++record->holders_;
  return record;
}

void OID::GiveUp(OID* record, IZDMObject* object) {
  if (record == nullptr) return;
  if (record->Object != object && record->Object != nullptr) {
    Leave(record);
    return;
  }
  record->Object = nullptr;
  record->Status.reset(ZOS_VALID);
  record->Status.reset(ZOS_ATTACHED);
  record->Release();
}

void OID::Leave(OID* record) {
  if (record != nullptr) --record->holders_;
}

void OID::NoteOtherObject() const {
  if (table_ != nullptr) ++table_->revision_;
}

void OID::Release() {
  if (--holders_ == 0) delete this;
}
