// Arrays, parameters, links, definitions and owners come, meet, change and go in any order; under
// the sanitizers nothing is reached that is gone.
#include "tests/parameters/ArraySupport.h"

#include <functional>
#include <random>

namespace {

using namespace zdm::test;

/// Asks everything that follows a pointer.
void Ask(IZParameter* parameter, const GUID& key) {
  if (parameter == nullptr) return;
  parameter->GetDouble();
  KeyOf(parameter);
  NameOf(parameter);
  ZRefPtr<IZParameter> copy;
  parameter->CloneParameter(copy.Out());
  if (IZParameterArray* array = parameter->GetOwner()) {
    array->GetOwner();
    array->IsExist(key);
  }
}

TEST_F(ParameterArray, AnythingMayEndBeforeAnythingElse) {
  std::mt19937 random(7);
  ZRefPtr<IZParameterArray> arrays[4];
  ZRefPtr<IZParameter> parameters[12];
  ZRefPtr<IZDMObject> objects[4];
  BYTE number = 0;  // of a definition
  const auto anyOf = [&](auto& from) -> auto& { return from[random() % std::size(from)]; };
  // Made anew where it has gone.
  const auto anArray = [&]() -> IZParameterArray* {
    auto& one = anyOf(arrays);
    return one = one != nullptr ? one : MakeArray();
  };
  const auto aParameter = [&]() -> IZParameter* {
    auto& one = anyOf(parameters);
    return one = one != nullptr ? one : number % 2 == 0 ? MakeParameter() : MakeSource(db);
  };
  const auto anObject = [&]() -> IZDMObject* {
    auto& one = anyOf(objects);
    if (one == nullptr) db.Add(one = zdm::MakeObject<IZDMObject, Notified>());
    return one;
  };
  const auto definition = [&] { return db.manager->FindDefinition(At(number)); };
  const std::function<void()> steps[] = {
      [&] { anyOf(arrays) = nullptr; },
      [&] { anyOf(parameters) = nullptr; },
      [&] { anyOf(objects) = nullptr; },
      [&] { db.manager->RemoveItem(zdm::ViewAs<IZDMObject>(definition())); },
      [&] { aParameter()->SetDefinition(definition()); },
      [&] { aParameter()->SetDefinition(zdm::MakeObject<IZDefinition, CZDefinition>()); },
      [&] { aParameter()->SetRelation(anObject(), true); },
      [&] { aParameter()->SetDouble(number); },
      [&] { aParameter()->SetLinkedObject(ObjectOf(anyOf(parameters))); },
      [&] { anArray()->BeginAdd(); },
      [&] { anArray()->Add(aParameter(), 0); },
      [&] { anArray()->Add(aParameter(), 0); },
      [&] { anArray()->EndAdd(); },
      [&] { anArray()->SetOwner(anObject()); },
      [&] { anObject()->SetParameterArray(anArray(), number == 1); },
      [&] { anArray()->RemoveAt(static_cast<LONG>(random() % 4)); },
      [&] { anArray()->ReplaceFrom(anyOf(arrays), number > 2, 0); },
      [&] { anArray()->AddMissingFrom(anyOf(arrays)); },
      [&] { anArray()->UpdateFrom(anyOf(arrays), nullptr); },
      [&] { anArray()->SetParamDouble(At(number), 1); }};
  for (int round = 0; round < 20000; ++round) {
    number = static_cast<BYTE>(1 + random() % 5);
    anyOf(steps)();
    if (round % 4 != 0) continue;
    for (IZParameter* left : parameters) Ask(left, Key(number));
  }
}

}  // namespace
