#include "tools/zdm/DrawingInfo.h"

#include "drawing/CZDMDrawing.h"
#include "drawing/DrawingCounts.h"

namespace zdm::tool {

namespace {

/// A dash where the file says nothing.
std::string Said(const std::string& text) { return text.empty() ? "-" : Escaped(text); }

}  // namespace

Json DrawingInfo(CZDocument& document) {
  CZDMDrawing* drawing = FindDrawing(document);
  if (drawing == nullptr) return Json::object();
  const DrawingSource source =
      drawing->GetSources().empty() ? DrawingSource() : drawing->GetSources()[0];
  const DrawingCounts counts = Count(*drawing);
  return {{"drawing", Escaped(source.name)},
          {"sources", drawing->GetSources().size()},
          {"acadver", Said(source.version)},
          {"codepage", Said(source.codePage)},
          {"text", source.text},
          {"eol", source.hasCrlf ? "CRLF" : "LF"},
          {"bytes", source.bytes},
          {"layers", counts.layers},
          {"blocks", counts.blocks},
          {"ent_model", counts.entModel},
          {"ent_paper", counts.entPaper},
          {"ent_blocks", counts.entBlocks},
          {"ent_total", counts.entTotal},
          {"ins_model", counts.insModel},
          {"ins_total", counts.insTotal},
          {"nest_model", counts.nestModel},
          {"nest_any", counts.nestAny},
          {"paths_model", counts.pathsModel},
          {"attdefs", counts.attdefs},
          {"attribs", counts.attribs},
          {"vertices", counts.vertices},
          {"with_handle", counts.withHandle},
          {"no_handle", counts.noHandle},
          {"dup_handles", counts.dupHandles},
          {"xdata_records", counts.xdataRecords},
          {"xdata_entities", counts.xdataEntities},
          {"xdata_apps", counts.xdataApps},
          {"objects", counts.objects},
          {"dicts", counts.dicts},
          {"xrecords", counts.xrecords},
          {"xdict_links", counts.xdictLinks}};
}

}  // namespace zdm::tool
