#include "tools/zdm/Commands.h"

#include "platform/core/ZCore.h"
#include "platform/system/Text.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/module/ClassTable.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace zdm::tool {

namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const GUID& guid) {
  OLECHAR text[39];
  StringFromGUID2(guid, text, 39);
  return ToUtf8(text);
}

void Print(const std::string& line) { std::printf("%s\n", line.c_str()); }

std::string Joined(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : ", ") + word;
  return line;
}

void ListClasses(const Context& context) {
  Json rows = Json::array();
  for (const ClassInfo& row : GetClassTable()) {
    const std::vector<std::string> interfaces(row.interfaces.begin(), row.interfaces.end());
    if (context.json) {
      const Json classId = row.creatable ? Json(TextOf(row.classId)) : Json(nullptr);
      rows.push_back({{"name", row.name}, {"clsid", classId}, {"interfaces", interfaces}});
    } else {
      const std::string classId = row.creatable ? TextOf(row.classId) : "(not created by id)";
      std::printf("%-27s %-38s  %s%s\n", row.name, classId.c_str(), Joined(interfaces).c_str(),
                  row.built ? "" : "  (not in this build)");
    }
  }
  if (context.json) Print(rows.dump(2));
}

std::vector<std::string> InterfacesOf(CZObject& object) {
  std::vector<std::string> names;
  for (unsigned short id = 1; const char* name = CZObject::GetInterfaceName(id); ++id) {
    if (object.IsA(id)) names.emplace_back(name);
  }
  return names;
}

int Create(const Context& context, const std::string& classIdText) {
  GUID classId = {};
  const WideString wide = FromUtf8(classIdText);
  if (FAILED(CLSIDFromString(wide.c_str(), &classId))) {
    std::fprintf(stderr, "zdm: not a class identifier: %s\n", classIdText.c_str());
    return kUsage;
  }
  CZObject* created = ZCore::GetZFactory()->Create(classId);
  if (created == nullptr) {
    std::fprintf(stderr, "zdm: no class is registered under %s\n", TextOf(classId).c_str());
    return kFailed;
  }
  ZRefPtr<IZObject> object;
  object.Query(created);
  created->DecrementCount();  // the creator's reference
  const CZRClass& description = *object->getZRClass();
  const std::vector<std::string> interfaces = InterfacesOf(*object);
  if (context.json) {
    Print(Json{{"name", description.GetName()},
               {"clsid", TextOf(classId)},
               {"module", description.GetModuleName()},
               {"version", description.GetVersion()},
               {"references", object->GetReferenceCount()},
               {"interfaces", interfaces}}
              .dump(2));
  } else {
    std::printf("created a %s of module %s, %u reference\n", description.GetName(),
                description.GetModuleName(), static_cast<unsigned>(object->GetReferenceCount()));
    std::printf("answers to %s\n", Joined(interfaces).c_str());
  }
  return kDone;
}

}  // namespace

void AddClasses(CLI::App& app, Context& context) {
  app.add_subcommand("classes", "List the classes of the library and the interfaces they answer to")
      ->callback([&context] { ListClasses(context); });
}

void AddCreate(CLI::App& app, Context& context) {
  auto classId = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(
      "create", "Create an object by class identifier and say which interfaces it answers to");
  command->add_option("CLASS-ID", *classId, "such as {65808542-5A64-45F2-B71A-A6A6D03CD2D5}")
      ->required();
  command->callback([&context, classId] { context.exitCode = Create(context, *classId); });
}

}  // namespace zdm::tool
