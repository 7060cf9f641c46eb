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

ZDM_TEST_CLASS(Notified, IZObject, IZDMObject, IZRelation)

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

/// Whether the parameter serves the property, and whether it says that the property is handled.
struct Answer {
  bool serves = false;
  bool isHandled = false;
  bool operator==(const Answer&) const = default;
};
constexpr Answer kHandled = {true, true};
constexpr Answer kStrange = {false, false};

inline Answer Fill(IZParameter* parameter, IZProperty* property) {
  Answer answer = {.isHandled = true};
  answer.serves = parameter->FillProperty(0, property, &answer.isHandled);
  return answer;
}
inline Answer Apply(IZParameter* parameter, IZProperty* property) {
  Answer answer = {.isHandled = true};
  answer.serves = parameter->ApplyProperty(0, property, 0, &answer.isHandled);
  return answer;
}

/// A property as a sheet would offer it to the parameter of definition 1.
inline ZRefPtr<IZProperty> Offered() {
  auto property = MakeProperty();
  property->SetGUID(Key(1));
  return property;
}

inline std::string NameOf(IZParameter* parameter) {
  return TextOf([&](BSTR* out) { parameter->GetName(out); });
}

inline std::string StringOf(IZParameter* parameter) {
  return TextOf([&](BSTR* out) { parameter->GetString(out); });
}

}  // namespace zdm::test
