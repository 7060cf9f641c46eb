#include "tools/zdm/CategoryValues.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/identity/OID.h"

#include <memory>

namespace zdm::tool {

namespace {

Json Row(IZCategory& category) {
  Json row = {{"id", category.GetOID()->ID}, {"number", nullptr}, {"name", NameOf(category)}};
  row.update(CategoryFields(category));
  return row;
}

void ListCategories(const Context& context, const std::string& file) {
  const Document document = Open(file);
  Json rows = Json::array();
  for (const OID* oid : document->GetOIDManager()->GetOIDs()) {
    auto* category = oid->JudgeStatus(ZOS_VALID) ? ViewAs<IZCategory>(oid->Object) : nullptr;
    if (category != nullptr) rows.push_back(Row(*category));
  }
  if (context.json) return PrintJson(rows);
  for (const std::string& line : Lines({{"category", std::move(rows)}})) PrintLine(line);
}

}  // namespace

void AddCategories(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  Command command(app, "categories", "The categories, by ID: number, name, members, display");
  command.Argument("FILE", *file, "The document");
  command.Footer("Example:\n  zdm categories house.zdm");
  command.Run([&context, file] { ListCategories(context, *file); });
}

}  // namespace zdm::tool
