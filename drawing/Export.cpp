#include "drawing/Export.h"

#include "document/DocumentError.h"
#include "drawing/CZDMDrawing.h"
#include "drawing/DrawingTree.h"
#include "drawing/WrittenGroups.h"

#include <algorithm>
#include <fstream>

namespace zdm {

namespace {

class DrawingText {
 public:
  explicit DrawingText(CZDMDrawing& drawing)
      : drawing_(drawing),
        codec_(drawing.GetCodec()),
        lineEnd_(!drawing.GetSources().empty() && drawing.GetSources()[0].hasCrlf ? "\r\n" : "\n") {
    IZDMObjMgr* tables = drawing.FindSection("TABLES");
    IZDMObjMgr* names = tables != nullptr ? CZDMDrawing::FindSection(*tables, "APPID") : nullptr;
    for (LONGLONG pos = names != nullptr ? names->GetValidHeadPosition() : 0; pos != 0;) {
      const DrawingPart* part = PartOf(names->GetValidNext(pos));
      if (part == nullptr) continue;
      WideString name = codec_.Show(part->Groups().Find(2));
      applications_.emplace(KeyOfApplication(name), std::move(name));
    }
  }

  std::string Write() {
    struct Level {
      IZDMObjMgr* manager;
      LONGLONG next;
      GroupList tail;
    };
    constexpr std::size_t kDeepest = 256;
    std::vector<Level> levels;
    const auto enter = [&](IZDMObject& object) {
      const DrawingPart* part = PartOf(&object);
      if (part == nullptr) return;
      WrittenRecord record = WrittenGroups(object, *part, codec_, applications_);
      Append(record.head);
      auto* manager = ViewAs<IZDMObjMgr>(&object);
      if (manager == nullptr || levels.size() == kDeepest) return;
      if (IsObjects(object)) {
        AppendObjects(*manager);
        Append(record.tail);
      } else {
        levels.push_back({manager, manager->GetHeadPosition(), std::move(record.tail)});
      }
    };
    enter(drawing_);
    while (!levels.empty()) {
      Level& level = levels.back();
      if (level.next == 0) {
        Append(level.tail);
        levels.pop_back();
        continue;
      }
      IZDMObject* object = level.manager->GetNext(level.next);
      if (object != nullptr && object->IsObjectValid()) enter(*object);
    }
    return std::move(text_);
  }

 private:
  bool IsObjects(IZDMObject& object) const { return &object == static_cast<IZDMObject*>(objects_); }

  /// Entries of dictionaries stand where they stood in the file.
  void AppendObjects(IZDMObjMgr& section) {
    std::vector<std::pair<LONG, IZDMObject*>> objects;
    ForEachPart(section, [&](IZDMObject& object, DrawingPart& part) {
      if (&object != static_cast<IZDMObject*>(&section))
        objects.emplace_back(part.Place(), &object);
    });
    std::ranges::stable_sort(objects, {}, [](const auto& each) { return each.first; });
    for (const auto& [place, object] : objects) {
      const WrittenRecord record = WrittenGroups(*object, *PartOf(object), codec_, applications_);
      Append(record.head);
      Append(record.tail);
    }
  }

  /// Codes stand right-aligned in three places.
  void Append(const GroupList& groups) {
    constexpr std::size_t kPlaces = 3;
    for (const Group group : groups) {
      const std::string code = std::to_string(group.code);
      if (code.size() < kPlaces) text_.append(kPlaces - code.size(), ' ');
      text_ += code;
      text_ += lineEnd_;
      text_ += group.text;
      text_ += lineEnd_;
    }
  }

  CZDMDrawing& drawing_;
  TextCodec codec_;
  std::string_view lineEnd_;
  Applications applications_;
  IZDMObjMgr* objects_ = drawing_.FindSection("OBJECTS");
  std::string text_;
};

}  // namespace

std::string ExportDrawing(CZDMDrawing& drawing) { return DrawingText(drawing).Write(); }

void ExportDrawing(CZDMDrawing& drawing, const std::filesystem::path& path) {
  const std::string text = ExportDrawing(drawing);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) {
    const std::u8string name = path.u8string();
    throw DocumentError(DocumentFault::kNoAccess, E_FAIL,
                        std::string(name.begin(), name.end()) + ": cannot be written");
  }
}

}  // namespace zdm
