// Drawings for tests: sample files, small ones in a line, their groups.
#pragma once

#include "document/CZDocument.h"
#include "document/DocumentError.h"
#include "drawing/CZDMDrawing.h"
#include "drawing/DrawingFile.h"
#include "drawing/Export.h"
#include "drawing/GroupReader.h"
#include "drawing/Import.h"
#include "tests/support/TempFile.h"

#include <string>
#include <utility>
#include <vector>

namespace zdm::test {

using GroupTexts = std::vector<std::pair<LONG, std::string>>;

/// The groups of a file, comments left out.
inline GroupTexts GroupsOf(std::string_view bytes) {
  GroupTexts groups;
  GroupReader reader(bytes);
  for (Group group; reader.Next(group);) {
    if (group.code != 999) groups.emplace_back(group.code, group.text);
  }
  return groups;
}

inline std::string SampleBytes(const std::string& name) {
  return ReadFile(std::filesystem::path(ZDM_DRAWINGS) / name);
}

/// A file of the words of `text`, which are codes and values in turn.
inline std::string FileOf(std::string text) {
  for (char& c : text) c = c == ' ' ? '\n' : c;
  return text + '\n';
}

/// Two sections around the entities and blocks of a small drawing with one layer, "Walls".
inline std::string SmallFile(const std::string& entities, const std::string& blocks = {}) {
  return FileOf(
      "0 SECTION 2 TABLES 0 TABLE 2 LAYER 0 LAYER 2 Walls 70 0 62 1 6 DASHED 0 ENDTAB "
      "0 ENDSEC 0 SECTION 2 BLOCKS " +
      blocks + "0 ENDSEC 0 SECTION 2 ENTITIES " + entities + "0 ENDSEC 0 EOF");
}

inline ZRefPtr<CZDocument> NewDocument() { return MakeObject<CZDocument, CZDocument>(); }

/// Saved, and opened again.
inline ZRefPtr<CZDocument> Reopened(CZDocument& document) {
  const std::filesystem::path path = TempFile("drawing.zdm");
  document.SaveAs(path);
  return CZDocument::Open(path);
}

inline std::string Exported(CZDocument& document) { return ExportDrawing(*FindDrawing(document)); }

inline std::string CodesOf(const ImportReport& report) {
  std::string codes;
  for (const Warning& warning : report.warnings) codes += std::string(NameOf(warning.code)) + ' ';
  return codes;
}

}  // namespace zdm::test
