// The record of an object's parameters, which may come in any order, refer to definitions or to
// other objects, and break off. What was read is found, shown, merged and copied, and what is
// written reads back the same.
#include "fuzz/Fuzz.h"
#include "tests/parameters/ParameterSupport.h"
#include "tests/support/CapturedOutput.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

using namespace zdm::test;

ZDM_FUZZ(bytes) {
  const zdm::CapturedOutput output;
  Definitions db;  // its manager has ID 1, the definitions 2 to 4
  for (const BYTE number : {BYTE{1}, BYTE{2}, BYTE{3}}) db.Make(number, 3, number % 2);
  const auto owner = zdm::MakeObject<Notified, Notified>();
  const auto array = zdm::MakeObject<IZParameterArray, CZParameterArray>();
  array->SetOwner(owner.Get());
  LoadsBytes(*array, bytes, &db);

  for (LONG i = 0; i < array->GetCount(); ++i) {
    IZParameter* const parameter = array->GetAt(i);
    Require(parameter->GetOwner() == array.Get());
    const GUID key = KeyOf(parameter);
    IZParameter* const found = array->GetParameter(key);
    Require((found != nullptr) == (key != GUID_UNSET));
    Require(found == nullptr || KeyOf(found) == key);
  }
  const auto groups = zdm::NewOf<IZPropertyGroupColl, CZPropertyGroupColl>();
  array->BuildPropertyGroups(0, groups);
  ZReltnVisitorStatus visitor;
  array->Accept(nullptr, owner.Get(), &visitor);

  ZRefPtr<IZParameterArray> clone;
  array->Clone(clone.Out());
  Require(clone->GetCount() == array->GetCount());
  clone->AddMissingFrom(array);
  clone->UpdateFrom(array->GetIZObject(), nullptr);
  const LONG count = array->GetCount();
  clone->ReplaceFrom(array, true, 0);
  Require(clone->GetCount() == count && owner->notices == 0);

  const Bytes saved = SavedBytes(*array, &db);
  const auto again = zdm::MakeObject<IZParameterArray, CZParameterArray>();
  if (LoadsBytes(*again, saved, &db)) Require(SavedBytes(*again, &db) == saved);
  array->EndAdd();
  array->BeginAdd();
  array->EndAdd();
  for (LONG i = 0; i < array->GetCount(); ++i) {
    const GUID key = KeyOf(array->GetAt(i));
    Require(key == GUID_UNSET || array->IsExist(key));
  }
}
