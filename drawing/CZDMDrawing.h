// A drawing: what was imported into a document, as sections of records in the order of the first
// file. It remembers what its files said of themselves, and in what code page the texts of its
// groups are. Stream form: above SaveOwnData in CZDMDrawing.cpp.
#pragma once

#include "drawing/DrawingObject.h"
#include "drawing/TextCodec.h"

#include <string>
#include <vector>

class CZDocument;

namespace zdm {

/// What a file says of itself, in its own bytes.
struct DrawingSource {
  std::string name;      // of the file, UTF-8
  std::string version;   // such as AC1018; empty without
  std::string codePage;  // as the header names it; empty without
  std::string text;      // "ascii", "utf-8" or "8-bit", and "+\U" with escapes
  bool hasCrlf = false;
  ULONGLONG bytes = 0;

  bool operator==(const DrawingSource&) const = default;
};

}  // namespace zdm

class CZDMDrawing : public DrawingObject<IZDMObjMgrImpl<IZDMObjMgr>> {
  ZDM_OBJECT(CZDMDrawing)
 public:
  using DrawingObject::CopyFrom;

  /// The first one is the file that the drawing began as.
  const std::vector<zdm::DrawingSource>& GetSources() const { return sources_; }
  void AddSource(zdm::DrawingSource source) { sources_.push_back(std::move(source)); }
  /// Of the texts in all groups.
  const zdm::TextCodec& GetCodec() const { return codec_; }
  void SetCodec(const zdm::TextCodec& codec) { codec_ = codec; }

  /// The section or, inside one, the table of that name (borrowed); null for none.
  static IZDMObjMgr* FindSection(IZDMObjMgr& manager, std::string_view name);
  IZDMObjMgr* FindSection(std::string_view name) { return FindSection(*this, name); }

  /// Of another drawing also the sources and the code page.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

 private:
  std::vector<zdm::DrawingSource> sources_;
  zdm::TextCodec codec_;
};

namespace zdm {

/// The drawing of a document (borrowed); null without one.
CZDMDrawing* FindDrawing(CZDocument& document);
/// The drawing that the object is in (borrowed); null for none.
CZDMDrawing* DrawingOf(IZDMObject& object);

}  // namespace zdm
