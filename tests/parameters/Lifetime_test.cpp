// Arrays, parameters, links, definitions and owners come, meet, change and go in any order; under
// the sanitizers nothing is reached that is gone.
#include "tests/parameters/ArraySupport.h"

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
  const auto below = [&](std::size_t count) { return random() % count; };
  std::vector<ZRefPtr<IZParameterArray>> arrays(4);
  std::vector<ZRefPtr<IZParameter>> parameters(12);
  std::vector<ZRefPtr<IZDMObject>> objects(4);
  const auto any = [&](auto& from) { return from[below(from.size())].Get(); };
  for (int round = 0; round < 20000; ++round) {
    auto& anArray = arrays[below(arrays.size())];
    auto& parameter = parameters[below(parameters.size())];
    auto& object = objects[below(objects.size())];
    const auto number = static_cast<BYTE>(1 + below(5));
    if (anArray == nullptr) anArray = MakeArray();
    if (parameter == nullptr) parameter = number % 2 == 0 ? MakeParameter() : MakeSource(db);
    if (object == nullptr) db.Add(object = zdm::MakeObject<IZDMObject, Notified>());
    switch (below(20)) {
      case 0:
        anArray = nullptr;
        break;
      case 1:
        parameter = nullptr;
        break;
      case 2:
        object = nullptr;
        break;
      case 3:
        if (IZDefinition* definition = db.manager->FindDefinition(At(number))) {
          db.manager->RemoveItem(zdm::ViewAs<IZDMObject>(definition));
        }
        break;
      case 4:
        parameter->SetDefinition(db.manager->FindDefinition(At(number)));
        break;
      case 5:
        parameter->SetRelation(object, true);
        break;
      case 6:
        parameter->SetDouble(number);
        break;
      case 7:
        anArray->BeginAdd();
        break;
      case 8:
      case 9:
        anArray->Add(parameter, 0);
        break;
      case 10:
        anArray->EndAdd();
        break;
      case 11:
        anArray->SetOwner(object);
        break;
      case 12:
        object->SetParameterArray(anArray, number == 1);
        break;
      case 13:
        anArray->RemoveAt(static_cast<LONG>(below(4)));
        break;
      case 14:
        anArray->ReplaceFrom(any(arrays), number > 2, 0);
        break;
      case 15:
        anArray->AddMissingFrom(any(arrays));
        break;
      case 16:
        anArray->UpdateFrom(any(arrays), nullptr);
        break;
      case 17:
        if (IZParameter* source = any(parameters)) parameter->SetLinkedObject(ObjectOf(source));
        break;
      case 18:  // a definition that was never in a document
        parameter->SetDefinition(zdm::MakeObject<IZDefinition, CZDefinition>());
        break;
      default:
        anArray->SetParamDouble(At(number), 1);
        break;
    }
    if (round % 4 != 0) continue;
    for (IZParameter* left : parameters) Ask(left, Key(number));
  }
}

}  // namespace
