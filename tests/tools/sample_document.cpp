// Makes the documents that command_line.py looks at.
// sample_document FILE:
// 1 manager "Walls" holding 2, 3 and 5; 4 in the document. 3 refers to 2 (diffusible), 4 to 3.
// 3 carries extended data of several types; 5 has a name that would drive a terminal.
// sample_document FILE sheet:
// 1 manager of the definitions 2 "Width", 3 "Colour" and 4 "Locked", in two groups; 5 "Wall" with a
// parameter of each; 6 manager of the parameter 7, a width.
#include "document/Document.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/IZParameterMgr.h"
#include "zdm/properties/IZProperty.h"

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

constexpr GUID KeyOf(BYTE number) {
  return {0xD0000000, 0, 0x4000, {0x80, 0, 0, 0, 0, 0, 0, number}};
}

void Define(IZDefinitionMgr* definitions, BYTE number, const OLECHAR* name, ULONG type,
            LONG index) {
  const auto property = zdm::NewOf<IZProperty, CZProperty>();
  property->SetName(name);
  property->SetDisplayName(name);
  property->SetGUID(KeyOf(number));
  property->SetType(type);
  const auto definition = zdm::NewOf<IZDefinition, CZDefinition>();
  definition->SetProperty(property, true);
  definition->SetIndex(index);
  definitions->AddDefinition(definition);
}

zdm::Document Sample() {
  auto document = zdm::Document::Create(OLESTR("Sample"));
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
  IZDMObject* wall = document.Add(OLESTR("South wall"), walls);
  IZDMObject* door = document.Add(OLESTR("T\u00fcr"), walls);
  IZDMObject* key = document.Add(OLESTR("Key"));
  document.Add(OLESTR("\u001b[31mred\u202e\u009b\r\n\u007f"), walls);
  document.Relate(door, wall, ZR_DIFFUSIBLE)->SetReltnTag(7);
  document.Relate(key, door);
  Attach(door);
  return document;
}

zdm::Document SheetSample() {
  auto document = zdm::Document::Create(OLESTR("Sheet"));
  const auto definitions = zdm::NewOf<IZDefinitionMgr, CZDefinitionMgr>();
  document.Add(definitions, nullptr);
  definitions->RegisterName(7, OLESTR("Look"));
  definitions->RegisterName(3, OLESTR("Size"));
  Define(definitions, 1, OLESTR("Width"), 3, 3);
  Define(definitions, 2, OLESTR("Colour"), 1, 7);
  Define(definitions, 3, OLESTR("Locked"), 10, 7);
  const GUID keys[] = {KeyOf(1), KeyOf(2), KeyOf(3)};

  ZRefPtr<IZParameterArray> parameters;
  document.Add(OLESTR("Wall"))->GetParameterArray(parameters.Out());
  parameters->BeginAdd();
  parameters->AddDoubleParameter(definitions, &keys[0], 1, 0.3, 0x0A);
  parameters->AddStringParameter(definitions, &keys[1], OLESTR("red"), 0x0A);
  parameters->AddBoolParameter(definitions, &keys[2], true, 0x0E);
  parameters->EndAdd();

  const auto own = zdm::NewOf<IZParameterMgr, CZDMParameterMgr>();
  document.Add(own, nullptr);
  own->AddDoubleParameter(definitions, &keys[0], 1, 2.5, 0x0A);
  return document;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSheet = argc == 3 && std::string_view(argv[2]) == "sheet";
  if (argc != 2 && !isSheet) return 2;
  auto document = isSheet ? SheetSample() : Sample();
  document.Save(argv[1]);
  return 0;
}
