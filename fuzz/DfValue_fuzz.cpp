// Field values: the first byte is the type code, the rest the stream form. What loads is saved to a
// form that loads to the same again, and so is a copy of it.
#include "fuzz/Fuzz.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/relations/ZDfValues.h"

#include <memory>

using namespace zdm::test;

namespace {

struct Releaser {
  void operator()(ZDfValue* value) const { value->Release(); }
};
using Held = std::unique_ptr<ZDfValue, Releaser>;

std::vector<BYTE> SavedValue(ZDfValue& value, IZDatabase& database) {
  ByteStream stream;
  value.Save(&stream, &database);
  return stream.GetBytes();
}

}  // namespace

ZDM_FUZZ(bytes) {
  static const HRESULT registered = DllRegisterZModule();
  if (bytes.empty() || registered != S_OK) return;
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  const Held value(ZDfValueRxClass::CreateZDfValue(bytes[0]));
  if (value == nullptr) return;
  ByteStream in(std::vector<BYTE>(bytes.begin() + 1, bytes.end()));
  Loads([&] { value->Load(&in, &database); });  // what it holds now is a value in any case
  const std::vector<BYTE> saved = SavedValue(*value, database);
  ByteStream stream(saved);
  const Held again(ZDfValueRxClass::CreateZDfValue(bytes[0]));
  again->Load(&stream, &database);
  Require(SavedValue(*again, database) == saved && stream.GetBytesLeft() == 0);
  ZDfValue* clone = nullptr;
  value->Clone(&clone);
  const Held copy(clone);
  copy->CopyFrom(value.get());
  copy->JudgeSame(value.get());
  Recorder visitor;
  copy->Accept(nullptr, nullptr, &visitor);
}
