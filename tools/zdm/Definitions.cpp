#include "tools/zdm/Definitions.h"

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Parameters.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/properties/IZProperty.h"

#include <memory>

namespace zdm::tool {

namespace {

Json Text(const Bstr& text) { return text.IsNull() ? Json(nullptr) : Json(ToUtf8(text.View())); }

Json GroupOf(IZDefinition& definition) {
  IZDefinitionMgr* manager = definition.GetDefinitionMgr();
  if (manager == nullptr || !manager->GetNameTable()->contains(definition.GetIndex())) return {};
  Bstr name;
  manager->GetNameByKey(definition.GetIndex(), name.Out());
  return Text(name);
}

std::string Hex(const ZDefinitionExtra& extra) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  const auto* bytes = reinterpret_cast<const BYTE*>(&extra);
  for (std::size_t i = 0; i < sizeof(extra); ++i) {
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 15];
  }
  return text;
}

std::string Line(const Json& row) {
  const auto quoted = [&](const char* key) {
    return row[key].is_null() ? "-" : Quoted(row[key].get<std::string>());
  };
  return Painted(Colour::kCyan, row["id"].dump()) + ' ' + quoted("name") + ' ' +
         Painted(Colour::kDim, row["key"].get<std::string>()) + " type=" + row["type"].dump() +
         " index=" + row["index"].dump() + " group=" + quoted("group");
}

/// In the order of the ID table.
void PrintDefinitions(const Context& context, const std::string& file) {
  const Document document = Open(file);
  Json rows = Json::array();
  for (const OID* oid : document->GetOIDManager()->GetOIDs()) {
    auto* definition = ViewAs<IZDefinition>(oid->Object);
    if (definition == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    Json row = {{"id", oid->ID}};
    row.update(Described(*definition));
    if (!context.json) PrintLine(Line(row));
    rows.push_back(std::move(row));
  }
  if (context.json) PrintJson(rows);
}

}  // namespace

Json Described(IZDefinition& definition) {
  GUID key;
  Bstr name;
  definition.GetName(name.Out());
  IZProperty* property = definition.GetProperty();
  Json out = {{"key", TextOf(*definition.GetKey(&key))},
              {"name", Text(name)},
              {"type", definition.PropertyCall()},
              {"index", definition.GetIndex()},
              {"group", GroupOf(definition)},
              {"kind", definition.GetKind()},
              {"flags", definition.GetFlags()},
              {"value", property != nullptr ? ValueOf(*property) : Json(nullptr)}};
  if (const ZDefinitionExtra* extra = definition.GetExtra()) out["extra"] = Hex(*extra);
  return out;
}

Json Groups(IZDefinitionMgr& manager) {
  std::vector<LONG> keys;
  for (const auto& [key, entry] : *manager.GetNameTable()) keys.push_back(key);
  manager.SortKeysByRegistration(keys);
  Json groups = Json::array();
  for (const LONG key : keys) {
    Bstr name;
    manager.GetNameByKey(key, name.Out());
    groups.push_back({{"index", key}, {"name", Text(name)}});
  }
  return groups;
}

void AddDefinitions(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  Command command(app, "definitions", "The definitions that parameters are made from");
  command.Argument("FILE", *file, "The document");
  command.Footer("Example:\n  zdm definitions house.zdm");
  command.Run([&context, file] { PrintDefinitions(context, *file); });
}

}  // namespace zdm::tool
