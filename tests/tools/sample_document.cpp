// Makes the documents that command_line.py looks at.
//
// sample_document FILE: 1 manager "Walls" holding 2, 3 and 5; 4 in the document. 3 refers to 2
// (diffusible), 4 to 3. 3 carries extended data of several types; 5 has a name that would drive a
// terminal. Categories 6 "Outside" and its member 7 "Plaster", hidden; 2 is related to them, with
// its own level.
//
// sample_document FILE parameters: 1 holds the definitions 2 to 7, 8 the document's parameter 9; 10
// is "Wall", and 11 "Door" has a parameter of each definition, one of them linked to 9.
#include "document/Document.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/ZClass.h"
#include "zdm/host/ZGiHatchData.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameterMgr.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/relations/ZDfValues.h"

#include <cstdio>
#include <exception>
#include <string_view>

namespace {

constexpr GUID kModule = zdm::ParseGuid("5E1F6A4E-9A3B-4F57-8C7D-2B1A0E9F8D6C");

void Attach(IZDMObject* object) {
  const auto attach = [&](const OLECHAR* name, auto value) {
    ZExtDataWrapper::AddExtData(object, kModule, name, value, true);
  };
  attach(OLESTR("width"), 0.1);
  attach(OLESTR("share"), 0.1F);
  attach(OLESTR("count"), LONG{-3});
  attach(OLESTR("open"), true);
  attach(OLESTR("note"), static_cast<const OLECHAR*>(OLESTR("a \"b\"\n\u00e9")));
}

void Categorize(zdm::Document& document, IZDMObject* wall) {
  auto* manager = document->GetCategoryMgr();
  const auto outside = zdm::Attached(manager->GetOrCreateCategory(70, OLESTR("Outside")));
  const auto plaster = zdm::Attached(manager->GetOrCreateCategory(80, OLESTR("Plaster")));
  outside->AddMember(plaster);
  plaster->SetCategoryVisible(false);
  const ZRefPtr<IZCategoryReltn> relation = outside->CreateCategoryReltn();
  relation->SetLevel(9);
  ZGiHatchData hatch;
  hatch.Pattern = zdm::Bstr(OLESTR("red brick"));
  relation->SetHatchA(&hatch);
  wall->AddRelation(relation.Get());
}

enum Index : LONG { kShape = 3, kSize = 7 };

constexpr GUID Key(BYTE number) { return {0xD0000000, 0, 0, {0, 0, 0, 0, 0, 0, 0, number}}; }

/// A property of class C with a key, its names and a type code.
template <class C>
ZRefPtr<IZProperty> MakeProperty(BYTE number, const OLECHAR* name, const OLECHAR* displayName,
                                 ULONG type) {
  auto property = zdm::NewOf<IZProperty, C>();
  property->SetName(name);
  property->SetDisplayName(displayName);
  property->SetGUID(Key(number));
  property->SetType(type);
  return property;
}

void Define(IZDefinitionMgr* definitions, LONG index, IZProperty* property) {
  const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
  definition->SetProperty(property, true);
  definition->SetIndex(index);
  definitions->AddDefinition(definition);
}

void MakeDefinitions(IZDefinitionMgr* definitions) {
  definitions->RegisterName(kShape, OLESTR("Shape"));
  definitions->RegisterName(kSize, OLESTR("Size"));
  const auto width = MakeProperty<CZProperty>(1, OLESTR("W"), OLESTR("Width"), 3);
  const auto kind = MakeProperty<CZPropertyIndex>(4, OLESTR("K"), OLESTR("Kind"), 25);
  zdm::ViewAs<IZPropertyIndex>(kind)->AddEntry(1, OLESTR("oak"));
  zdm::ViewAs<IZPropertyIndex>(kind)->AddEntry(2, OLESTR("pine"));
  Define(definitions, kSize, width);
  Define(definitions, kShape, MakeProperty<CZProperty>(2, OLESTR("Note"), OLESTR(""), 1));
  Define(definitions, kSize, MakeProperty<CZProperty>(3, OLESTR("H"), OLESTR("Height"), 3));
  Define(definitions, kShape, kind);
  Define(definitions, kShape, MakeProperty<CZPropertyYesNo>(5, OLESTR("O"), OLESTR("Open"), 10));
  Define(definitions, kShape, MakeProperty<CZProperty>(6, OLESTR("In"), OLESTR("Stands in"), 9));
}

void MakeParameters(zdm::Document& document) {
  const auto definitions = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  document.Add(definitions.Get(), nullptr);
  MakeDefinitions(definitions);
  const auto parameters = zdm::MakeObject<CZDMParameterMgr, CZDMParameterMgr>();
  document.Add(static_cast<IZDMObject*>(parameters.Get()), nullptr);
  const GUID height = Key(3);
  parameters->AddDoubleParameter(definitions, &height, 1, 2.5, 0x0A);
  IZDMObject* wall = document.Add(OLESTR("Wall"));
  IZDMObject* door = document.Add(OLESTR("Door"));
  ZRefPtr<IZParameterArray> array;
  door->GetParameterArray(array.Out());
  array->BeginAdd();
  GUID keys[7];
  for (BYTE number = 1; number <= 6; ++number) keys[number] = Key(number);
  array->AddRelationParameter(definitions, &keys[6], 6, wall, true, 0x0A);
  array->AddBoolParameter(definitions, &keys[5], true, 0x0E);
  array->AddLongParameter(definitions, &keys[4], 4, 1, 0x0A);
  array->AddDoubleParameter(definitions, &keys[3], 3, 1, 0x0A);
  array->AddStringParameter(definitions, &keys[2], OLESTR("a \"b\"\u202e"), 0x0A);
  array->AddDoubleParameter(definitions, &keys[1], 1, 0.9, 0x0A);
  array->EndAdd();
  array->GetParameter(height)->SetLinkedObject(parameters->GetHead());
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc == 3 && argv[2] == std::string_view("parameters")) {
    auto document = zdm::Document::Create(OLESTR("Parameters"));
    MakeParameters(document);
    document.Save(argv[1]);
    return 0;
  }
  if (argc != 2) return 2;
  auto document = zdm::Document::Create(OLESTR("Sample"));
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
  IZDMObject* wall = document.Add(OLESTR("South wall"), walls);
  IZDMObject* door = document.Add(OLESTR("T\u00fcr"), walls);
  IZDMObject* key = document.Add(OLESTR("Key"));
  document.Add(OLESTR("\u001b[31mred\u202e\u009b\r\n\u007f"), walls);
  document.Relate(door, wall, ZR_DIFFUSIBLE)->SetReltnTag(7);
  document.Relate(key, door);
  Attach(door);
  Categorize(document, wall);
  document.Save(argv[1]);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
} catch (...) {
  return 1;
}
