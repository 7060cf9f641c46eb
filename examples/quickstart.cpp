// A document in a minute: make one, put objects into it, relate them, attach a value of one's own,
// save, open again, ask what refers to what, delete.
//   quickstart [FILE]
#include "document/Document.h"
#include "document/DocumentError.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/ZClass.h"

#include <cstdio>

namespace {

constexpr GUID kMyModule = zdm::ParseGuid("5E1F6A4E-9A3B-4F57-8C7D-2B1A0E9F8D6C");

void Draw(const char* file) {
  auto document = zdm::Document::Create(OLESTR("House"));
  IZDMObjMgr* ground = document.AddManager(OLESTR("Ground floor"));
  IZDMObject* wall = document.Add(OLESTR("South wall"), ground);
  IZDMObject* door = document.Add(OLESTR("Front door"), ground);
  document.Relate(door, wall, ZR_DIFFUSIBLE);
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
