// Field values: the first byte is the type code, the rest the stream form. What loads is saved to a
// form that loads to the same again, and so is a copy of it.
#include "fuzz/Fuzz.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/relations/ZDfValues.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  static const HRESULT registered = DllRegisterZModule();
  if (bytes.empty() || registered != S_OK) return;
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  const HeldValue value(ZDfValueRxClass::CreateZDfValue(bytes[0]));
  if (value == nullptr) return;
  LoadsBytes(*value, {bytes.begin() + 1, bytes.end()}, &database);  // a value in any case
  const std::vector<BYTE> saved = SavedBytes(*value, &database);
  ByteStream stream(saved);
  const HeldValue again(ZDfValueRxClass::CreateZDfValue(bytes[0]));
  again->Load(&stream, &database);
  Require(SavedBytes(*again, &database) == saved && stream.GetBytesLeft() == 0);
  ZDfValue* clone = nullptr;
  value->Clone(&clone);
  const HeldValue copy(clone);
  copy->CopyFrom(value.get());
  copy->JudgeSame(value.get());
  Recorder visitor;
  copy->Accept(nullptr, nullptr, &visitor);
}
