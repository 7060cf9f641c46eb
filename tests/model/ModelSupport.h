// Objects for tests of data-model objects.
#pragma once

#include "platform/system/Text.h"
#include "tests/support/Bytes.h"
#include "tests/support/IDNotes.h"
#include "tests/support/TestDatabase.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/parameters/CZParameterArray.h"

#include <gtest/gtest.h>

#include <string>

ZDM_TEST_CLASS(Stray, IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// An item of extended data that is only a name.
inline ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name) {
  auto item = NewOf<IZExtDataAccess, CZExtDataObj>();
  item->SetName(name);
  return item;
}

/// A new array of one parameter, without definition, that refers to `target`.
ZRefPtr<IZParameterArray> ParametersTo(IZDMObject* target);

/// The IDs that the object offers.
inline std::string IDsOffered(IZDMObject& object, LONG stopAt = 0) {
  IDNotes visitor(stopAt);
  object.VisitReferences(&object, &visitor);
  return visitor.text;
}

/// An object of a class that the factory does not know.
class Stray : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Stray)
 public:
  IZGiMaterial* GetCategoryMaterial() override { return categoryMaterial; }

  ZRefPtr<IZGiMaterial> categoryMaterial;
};

inline ZRefPtr<IZDMObject> MakePlain() { return MakeObject<IZDMObject, CZDMPlainObject>(); }

/// "-" for none.
inline std::string NameOf(IZDMObject& object) {
  Bstr name;
  object.GetName(name.Out());
  return name.IsNull() ? "-" : ToUtf8(name.Get());
}

/// Tests of objects of a document.
class DMObject : public testing::Test {
 protected:
  DMObject() { RegisterDocumentClasses(); }
  TestDatabase db;
};

}  // namespace zdm::test
