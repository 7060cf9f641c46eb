#include "drawing/Import.h"

#include "document/CZDocument.h"
#include "drawing/CZDMDrawingBlock.h"
#include "drawing/DrawingBuilder.h"
#include "drawing/DrawingFile.h"
#include "drawing/ExtendedData.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"
#include "drawing/GroupRelations.h"
#include "drawing/Layers.h"
#include "drawing/NestedPaths.h"
#include "drawing/Numbers.h"
#include "drawing/Parameters.h"

namespace zdm {

namespace {

const WideString kDefaultLayer = OLESTR("0");

/// Gives the objects of one file what refers from one to another, once all are there.
class Links {
 public:
  Links(CZDocument& document, CZDMDrawing& drawing, const DrawingBuilder& builder,
        Warnings& warnings)
      : codec_(drawing.GetCodec()),
        builder_(builder),
        layers_(document),
        parameters_(document, codec_, warnings),
        warnings_(warnings) {}

  void Make() {
    for (const MadeObject& made : builder_.Made()) {
      if (IsLayer(made)) layers_.AddRecord(*made.object, codec_);
    }
    for (const MadeObject& made : builder_.Made()) {
      const GroupList& groups = PartOf(made.object)->Groups();
      if (made.isEntity) AssignLayer(made, groups);
      RelateToBlock(made, groups);
      RelateHandles(made, groups);
      MakeExtendedData(*made.object, groups, codec_);
      parameters_.Make(*made.object, made.line);
    }
  }

 private:
  static bool IsLayer(const MadeObject& made) {
    const DrawingPart* owner = PartOf(made.object->GetOwner());
    return PartOf(made.object)->Type() == "LAYER" && owner != nullptr && owner->Type() == "TABLE";
  }

  void AssignLayer(const MadeObject& made, const GroupList& groups) {
    WideString name = codec_.Show(groups.Find(kLayerCode));
    if (name.empty()) name = kDefaultLayer;
    IZCategory* layer = layers_.Find(name);
    if (layer == nullptr) {
      warnings_.Add(WarningCode::kUndefinedLayer, made.line, groups.Find(kLayerCode));
      layer = layers_.Query(name);
    }
    layers_.Assign(*made.object, *layer, codec_);
  }

  void RelateToBlock(const MadeObject& made, const GroupList& groups) {
    const std::string_view type = PartOf(made.object)->Type();
    if (!RefersToBlock(type)) return;
    const ULONG index = groups.IndexOf(kNameCode);
    if (index == groups.Count()) return;
    const std::string_view name = groups.Find(kNameCode);
    CZDMDrawingBlock* block = builder_.FindBlock(codec_.Show(name));
    if (block != nullptr) {
      RelateGroup(*made.object, index, block, ShowsBlock(type));
    } else if (ShowsBlock(type) && !name.empty()) {
      warnings_.Add(WarningCode::kMissingBlock, made.line, name);
    }
  }

  void RelateHandles(const MadeObject& made, const GroupList& groups) {
    ULONG index = 0;
    for (const Group group : groups) {
      const HandleKind kind = HandleKindOf(group.code);
      if (kind != HandleKind::kNone && ParseHandle(group.text)) {
        IZDMObject* target = builder_.FindHandle(group.text);
        if (target != nullptr) {
          RelateGroup(*made.object, index, target, kind == HandleKind::kHard);
        } else {
          warnings_.Add(WarningCode::kUnresolvedHandle, made.line, group.text);
        }
      }
      ++index;
    }
  }

  TextCodec codec_;
  const DrawingBuilder& builder_;
  Layers layers_;
  Parameters parameters_;
  Warnings& warnings_;
};

/// The next free handle that the header tells is above all.
void RaiseHandleSeed(CZDMDrawing& drawing, ULONGLONG highest) {
  IZDMObjMgr* header = drawing.FindSection("HEADER");
  for (LONGLONG pos = header != nullptr ? header->GetValidHeadPosition() : 0; pos != 0;) {
    DrawingPart* part = PartOf(header->GetValidNext(pos));
    if (part == nullptr || part->Type() != "$HANDSEED") continue;
    const ULONG index = part->Groups().IndexOf(5);
    const auto seed = ParseHandle(part->Groups().Find(5));
    if (!seed || *seed > highest || index == part->Groups().Count()) return;
    part->SetGroups(part->Groups().With(index, HandleText(highest + 1)));
    return;
  }
}

/// The drawing of the document, or a new one.
CZDMDrawing* QueryDrawing(CZDocument& document, const FileFacts& facts, Warnings& warnings) {
  if (CZDMDrawing* present = FindDrawing(document)) {
    const auto& sources = present->GetSources();
    if (!sources.empty() && sources[0].version != facts.source.version) {
      warnings.Add(WarningCode::kDifferentVersion, 0, facts.source.version);
    }
    return present;
  }
  const auto made = MakeObject<CZDMDrawing, CZDMDrawing>();
  made->SetName(FromUtf8(facts.source.name).c_str());
  made->SetCodec(facts.codec);
  document.AddTail(static_cast<IZDMObject*>(made.Get()));
  return made;
}

}  // namespace

ImportReport ImportDrawing(CZDocument& document, std::string_view bytes, const std::string& name,
                           const ImportOptions& options) {
  RegisterDrawingClasses();
  Warnings warnings;
  FileFacts facts = LookAt(bytes, name, options.codePage, &warnings);
  if (document.GetMaterialMgr() == nullptr) document.MakeDefaults();
  CZDMDrawing* drawing = QueryDrawing(document, facts, warnings);
  drawing->AddSource(facts.source);

  DrawingBuilder builder(*drawing, facts.codec, warnings);
  GroupReader reader(bytes, &warnings);
  for (Group group; reader.Next(group);) builder.Add(group, reader.Line());
  builder.Finish();
  Links(document, *drawing, builder, warnings).Make();
  if (builder.IsMerging()) RaiseHandleSeed(*drawing, builder.HighestHandle());
  PoolPaths(*drawing, *document.GetPIDManager(), &warnings);
  document.SetModified(true);
  return {drawing, std::move(facts.source), builder.Made().size(), facts.codec, warnings.All()};
}

ImportReport ImportDrawing(CZDocument& document, const std::filesystem::path& path,
                           const ImportOptions& options) {
  const std::u8string name = path.filename().u8string();
  return ImportDrawing(document, ReadFile(path), std::string(name.begin(), name.end()), options);
}

}  // namespace zdm
