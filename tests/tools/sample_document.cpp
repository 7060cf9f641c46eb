// Makes the document that command_line.py looks at: sample_document FILE.
// 1 manager "Walls" holding 2, 3 and 5; 4 in the document. 3 refers to 2 (diffusible), 4 to 3.
// 3 carries extended data of several types; 5 has a name that would drive a terminal.
// Categories 6 "Outside" and its member 7 "Plaster", hidden; 2 is related to them, with its own
// level.
#include "document/Document.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/ZClass.h"
#include "zdm/host/ZGiHatchData.h"

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
  auto* manager =
      zdm::ViewAs<IZCategoryMgr>(document->FindByInterface(ZInterface<IZCategoryMgr>::ID()));
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

}  // namespace

int main(int argc, char** argv) {
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
}
