// Definitions and parameters of a small document, for tests.
#pragma once

#include "tests/properties/PropertySupport.h"
#include "tests/support/TestDatabase.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/module/DllRegisterZModule.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/CZParameter.h"

#include <string>

namespace zdm::test {
class Notified;
}

ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::Notified,
              "00000000-0000-0000-0000-000000000000", IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// A document with a manager of definitions.
class Definitions : public TestDatabase {
 public:
  Definitions() {
    DllRegisterZModule();
    Add(manager);
  }

  /// A new definition with the key of that number, named "P" and the number.
  ZRefPtr<IZDefinition> Make(BYTE number, ULONG type = 3, LONG index = -1) {
    auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
    const auto property = MakeProperty();
    property->SetName(FromUtf8("P" + std::to_string(number)).c_str());
    property->SetGUID(Key(number));
    property->SetType(type);
    definition->SetProperty(property, true);
    definition->SetIndex(index);
    manager->AddDefinition(definition);
    return definition;
  }

  ZRefPtr<IZDefinitionMgr> manager = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
};

/// An object that counts the changes of its parameters.
class Notified : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Notified)
 public:
  void OnParametersChanged() override { ++notices; }

  int notices = 0;
};

inline ZRefPtr<IZParameter> MakeParameter(IZObject* definition = nullptr) {
  auto parameter = zdm::MakeObject<IZParameter, CZParameter>();
  if (definition != nullptr) parameter->SetDefinition(definition);
  return parameter;
}

/// A data-model parameter of the document, by its parameter side.
inline ZRefPtr<IZParameter> MakeSource(TestDatabase& db, IZObject* definition = nullptr) {
  auto source = zdm::MakeObject<CZDMParameter, CZDMParameter>();
  db.Add(source.Get());
  if (definition != nullptr) source->SetDefinition(definition);
  return ZRefPtr<IZParameter>(source.Get());
}

inline IZDMObject* ObjectOf(IZParameter* parameter) { return ViewAs<IZDMObject>(parameter); }

inline BYTE TypeOf(ZDfValue* value) { return value != nullptr ? value->GetType() : BYTE{0}; }

inline GUID KeyOf(IZParameter* parameter) {
  GUID key;
  return *parameter->GetDefinitionGUID(&key);
}

inline std::string NameOf(IZParameter* parameter) {
  return TextOf([&](BSTR* out) { parameter->GetName(out); });
}

inline std::string StringOf(IZParameter* parameter) {
  return TextOf([&](BSTR* out) { parameter->GetString(out); });
}

}  // namespace zdm::test
