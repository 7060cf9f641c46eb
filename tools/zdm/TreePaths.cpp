#include "tools/zdm/TreePaths.h"

#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingInsert.h"
#include "tools/zdm/Describe.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"

namespace zdm::tool {

namespace {

/// The block that the last insert of the path shows; null for a path of anything else.
IZDMObjMgr* BlockAt(const PID& path) {
  if (path.OIDs.empty() || path.OIDs.back() == nullptr) return nullptr;
  IZDMObject* last = path.OIDs.back()->Object;
  return last != nullptr ? BlockOf(*last) : nullptr;
}

Json Row(const PID& path) {
  Json ids = Json::array();
  for (const OID* record : path.OIDs) ids.push_back(record != nullptr ? record->ID : 0);
  Json row = {{"path", path.ID}, {"objects", std::move(ids)}, {"block", nullptr}, {"holds", 0}};
  if (IZDMObjMgr* block = BlockAt(path)) {
    row["block"] = Brief(*block->GetOID());
    row["holds"] = block->GetCount();
  }
  return row;
}

std::string Line(const PID& path) {
  std::string line = Painted(Colour::kCyan, std::to_string(path.ID)) + ':';
  for (const OID* record : path.OIDs) {
    line += line.ends_with(':') ? " " : " / ";
    line += record != nullptr ? std::to_string(record->ID) : "(none)";
  }
  if (IZDMObjMgr* block = BlockAt(path)) {
    line += " in " + BriefLine(*block->GetOID()) + ", " + std::to_string(block->GetCount()) +
            " objects";
  }
  return line;
}

}  // namespace

void PrintPaths(const Context& context, const Document& document) {
  Json rows = Json::array();
  for (const PID* path : document->GetPIDManager()->GetPIDs()) {
    if (context.json) {
      rows.push_back(Row(*path));
    } else {
      PrintLine(Line(*path));
    }
  }
  if (context.json) PrintJson(rows);
}

}  // namespace zdm::tool
