// Field values: the first byte is the type code, the rest the stream form. What loads is saved to a
// form that loads to the same again, and so is a copy of it.
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/relations/ZDfValues.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const HRESULT registered = DllRegisterZModule();
  if (size == 0 || registered != S_OK) return 0;
  OID oid(0, 0, 7, nullptr);
  Lookup database;
  database.records[7] = &oid;
  const Held value(ZDfValueRxClass::CreateZDfValue(data[0]));
  if (value == nullptr) return 0;
  ByteStream in(std::vector<BYTE>(data + 1, data + size));
  try {
    value->Load(&in, &database);
  } catch (const CAtlException&) {
    // What it holds now is still a value.
  }
  const std::vector<BYTE> bytes = SavedValue(*value, database);
  ByteStream stream(bytes);
  const Held again(ZDfValueRxClass::CreateZDfValue(data[0]));
  again->Load(&stream, &database);
  if (SavedValue(*again, database) != bytes || stream.GetBytesLeft() != 0) std::abort();
  ZDfValue* clone = nullptr;
  value->Clone(&clone);
  const Held copy(clone);
  copy->CopyFrom(value.get());
  copy->JudgeSame(value.get());
  Recorder visitor;
  copy->Accept(nullptr, nullptr, &visitor);
  return 0;
}
