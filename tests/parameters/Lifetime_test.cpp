// Parameters, arrays, definitions and owners end in any order, and whoever is left still answers.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace zdm::test;

/// Asks everything that follows a pointer.
void Ask(IZParameter* parameter) {
  parameter->GetDouble();
  KeyOf(parameter);
  NameOf(parameter);
  parameter->SetDouble(1.0);  // reports
  if (IZParameterArray* array = parameter->GetOwner()) array->GetCount();
  ZRefPtr<IZParameter> copy;
  parameter->CloneParameter(copy.Out());
}

TEST(ParameterLifetime, NothingDanglesInWhateverOrderThingsEnd) {
  Definitions db;
  std::mt19937 random(20);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  for (int round = 0; round < 60; ++round) {
    std::vector<ZRefPtr<IZDefinition>> definitions;
    std::vector<ZRefPtr<IZParameter>> parameters;
    std::vector<ZRefPtr<IZParameterArray>> arrays;
    std::vector<ZRefPtr<IZDMObject>> owners;
    for (BYTE i = 0; i < 4; ++i) {
      // Half of them were never in a document.
      definitions.push_back(i % 2 == 0 ? db.Make(i)
                                       : zdm::MakeObject<IZDefinition, CZDefinition>());
      if (i % 2 == 0) db.manager->RemoveItem(zdm::ViewAs<IZDMObject>(definitions.back()));
      owners.push_back(zdm::MakeObject<IZDMObject, Notified>());
      arrays.push_back(zdm::NewOf<IZParameterArray, CZParameterArray>());
      arrays.back()->SetOwner(owners[below(owners.size())]);
      if (below(2) == 0) owners.back()->SetParameterArray(arrays.back(), false);
    }
    for (int i = 0; i < 12; ++i) {
      parameters.push_back(below(2) == 0 ? MakeParameter()
                                         : zdm::MakeObject<IZParameter, CZDMParameter>());
      parameters.back()->SetDefinition(definitions[below(definitions.size())]);
      IZParameterArray* array = arrays[below(arrays.size())];
      array->BeginAdd();
      array->Add(parameters.back(), 0);
      if (below(3) != 0) array->EndAdd();
      if (below(3) == 0) parameters.back()->SetOwner(arrays[below(arrays.size())]);
      IZDMObject* source = ObjectOf(parameters[below(parameters.size())]);
      if (source != nullptr) parameters.back()->SetLinkedObject(source);
    }
    for (int step = 0; step < 40; ++step) {
      const auto drop = [&](auto& things) {
        if (!things.empty()) things.erase(things.begin() + static_cast<LONG>(below(things.size())));
      };
      switch (below(4)) {
        case 0:
          drop(definitions);
          break;
        case 1:
          drop(parameters);
          break;
        case 2:
          drop(arrays);
          break;
        default:
          drop(owners);
          break;
      }
      for (IZParameter* parameter : parameters) Ask(parameter);
      for (IZParameterArray* array : arrays) {
        for (LONG i = 0; i < array->GetCount(); ++i) Ask(array->GetAt(i));
      }
    }
  }
}

}  // namespace
