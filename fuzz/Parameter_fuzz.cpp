// Hostile bytes as three parameters of one document, which may be linked to each other and to
// themselves, or have each other for definition: reading, showing, copying and walking them ends,
// and what is written reads back the same.
#include "tests/parameters/ParameterSupport.h"
#include "tests/support/CapturedOutput.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

#include <cstdint>
#include <cstdlib>

using namespace zdm::test;

namespace {

bool Loads(IZParameter* parameter, const Bytes& bytes, IZDatabase* database) {
  ByteStream stream(bytes);
  return Thrown([&] { parameter->Load(&stream, database); }) == S_OK;
}

Bytes Saved(IZParameter* parameter, IZDatabase* database) {
  ByteStream stream;
  parameter->Save(&stream, database);
  return stream.GetBytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const zdm::CapturedOutput output;
  const Bytes bytes(data, data + size);
  Definitions db;                 // its manager has ID 1
  const auto first = db.Make(1);  // 2
  const ZRefPtr<IZParameter> parameters[] = {MakeSource(db, first), MakeSource(db, first),
                                             MakeSource(db)};  // 3, 4, 5
  for (const auto& parameter : parameters) Loads(parameter, bytes, &db);

  for (const auto& parameter : parameters) {
    const double asked = parameter->GetDouble();
    const double again = parameter->GetDouble();
    if (!(asked == again) && asked == asked) std::abort();
    const auto property = MakeProperty();
    property->SetGUID(Key(1));
    bool handled = false;
    parameter->FillProperty(0, property, &handled);
    parameter->ApplyProperty(0, property, 0, &handled);
    ZRefPtr<IZParameter> copy;
    parameter->CloneParameter(copy.Out());
    if ((copy->GetValue() == nullptr) != (parameter->GetValue() == nullptr)) std::abort();
    ZReltnVisitorStatus visitor;
    parameter->Accept(nullptr, ObjectOf(parameter), &visitor);

    const Bytes saved = Saved(parameter, &db);
    const auto loaded = MakeParameter();
    if (Loads(loaded, saved, &db) && Saved(loaded, &db) != saved) std::abort();
  }
  for (const auto& parameter : parameters) parameter->SetValue(nullptr);
  return 0;
}
