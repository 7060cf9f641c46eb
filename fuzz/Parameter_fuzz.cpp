// Hostile bytes as three parameters of one document, which may be linked to each other and to
// themselves, or have each other for definition: reading, showing, copying and walking them ends,
// and what is written reads back the same.
#include "fuzz/Fuzz.h"
#include "tests/parameters/ParameterSupport.h"
#include "tests/support/CapturedOutput.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  const zdm::CapturedOutput output;
  Definitions db;                 // its manager has ID 1
  const auto first = db.Make(1);  // 2
  const ZRefPtr<IZParameter> parameters[] = {MakeSource(db, first), MakeSource(db, first),
                                             MakeSource(db)};  // 3, 4, 5
  for (const auto& parameter : parameters) LoadsBytes(*parameter, bytes, &db);

  for (const auto& parameter : parameters) {
    const double asked = parameter->GetDouble();
    const double again = parameter->GetDouble();
    Require(asked == again || asked != asked);
    const auto property = MakeProperty();
    property->SetGUID(Key(1));
    bool handled = false;
    parameter->FillProperty(0, property, &handled);
    parameter->ApplyProperty(0, property, 0, &handled);
    ZRefPtr<IZParameter> copy;
    parameter->CloneParameter(copy.Out());
    Require((copy->GetValue() == nullptr) == (parameter->GetValue() == nullptr));
    ZReltnVisitorStatus visitor;
    parameter->Accept(nullptr, ObjectOf(parameter), &visitor);

    const Bytes saved = SavedBytes(*parameter, &db);
    const auto loaded = MakeParameter();
    if (LoadsBytes(*loaded, saved, &db)) Require(SavedBytes(*loaded, &db) == saved);
  }
  for (const auto& parameter : parameters) parameter->SetValue(nullptr);
}
