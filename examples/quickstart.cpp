// A document in a minute: make one, put objects into it, relate them, give them a category, a
// parameter and a value of one's own, save, open again, ask what refers to what, print a property
// sheet, delete.
//   quickstart [FILE]
#include "document/Document.h"
#include "document/DocumentError.h"
#include "document/ObjectSheet.h"
#include "platform/system/Text.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/ZClass.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/properties/PropertyType.h"

#include <cstdio>

namespace {

constexpr GUID kMyModule = zdm::ParseGuid("5E1F6A4E-9A3B-4F57-8C7D-2B1A0E9F8D6C");

constexpr GUID kThickness = zdm::ParseGuid("5E1F6A4E-0001-4F57-8C7D-2B1A0E9F8D6C");

/// What a parameter is called, its type and the group of the sheet that it stands in belong to its
/// definition, which many objects share.
void Measure(zdm::Document& document, IZDMObject* object) {
  const auto definitions = zdm::MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
  document.Add(definitions.Get(), nullptr);
  const auto property = zdm::MakeObject<IZProperty, CZProperty>();
  property->SetName(OLESTR("Thickness"));
  property->SetGUID(kThickness);
  property->SetType(zdm::kPropertyDouble);
  const auto definition = zdm::MakeObject<IZDefinition, CZDefinition>();
  definition->SetProperty(property, true);
  definitions->AddDefinition(definition);

  constexpr USHORT kNoKey = 0xFFFF;
  ZRefPtr<IZParameterArray> parameters;
  object->GetParameterArray(parameters.Out());
  parameters->BeginAdd();  // outside of a bulk add nothing is added
  parameters->AddDoubleParameter(definitions, &kThickness, kNoKey, 0.24, 0);
  parameters->EndAdd();
}

void Draw(const char* file) {
  auto document = zdm::Document::Create(OLESTR("House"));
  IZDMObjMgr* ground = document.AddManager(OLESTR("Ground floor"));
  IZDMObject* wall = document.Add(OLESTR("South wall"), ground);
  IZDMObject* door = document.Add(OLESTR("Front door"), ground);
  document.Relate(door, wall, ZR_DIFFUSIBLE);
  document.SetCategory(wall, 1, OLESTR("Walls"));
  Measure(document, wall);
  ZExtDataWrapper::AddExtData(door, kMyModule, OLESTR("width"), 0.95, true);
  document.Save(file);
}

void Look(const char* file) {
  auto document = zdm::Document::Open(file);
  auto* ground = zdm::ViewAs<IZDMObjMgr>(document.Find(1));
  IZDMObject* wall = document.Find(2);
  for (const zdm::Reference& reference : document.ReferencesTo(wall)) {
    double width = 0;
    ZExtDataWrapper::GetExtData(reference.from, kMyModule, OLESTR("width"), &width);
    std::printf("object %d, %.2f m wide, refers to the wall\n",
                static_cast<int>(reference.from->GetID()), width);
  }
  for (const zdm::ObjectSheet sheet(wall); const auto& group : sheet.GetGroups()) {
    for (IZProperty* property : group.properties) {
      zdm::Bstr name;
      property->GetName(name.Out());
      std::printf("%s of the wall: %.2f m\n", zdm::ToUtf8(name.View()).c_str(),
                  property->GetDouble());
    }
  }
  const zdm::Deletion refused = document.Delete({wall});
  std::printf("deleting the wall: %zu in the way\n", refused.obstacles.size());
  document.Delete({wall, document.Find(3)});
  document.Save();
  std::printf("both deleted, %d left\n", static_cast<int>(ground->GetCount()));
}

}  // namespace

int main(int argc, char** argv) {
  const char* file = argc > 1 ? argv[1] : "quickstart.zdm";
  try {
    Draw(file);
    Look(file);
  } catch (const zdm::DocumentError& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
