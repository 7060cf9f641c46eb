#include "platform/core/ZCore.h"
#include "platform/system/Text.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/module/ClassTable.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace zdm::tool {

namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : ", ") + word;
  return line;
}

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
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
      PrintLine(Padded(row.name, 27) + ' ' + Padded(classId, 38) + "  " + Joined(interfaces));
    }
  }
  if (context.json) PrintJson(rows);
}

std::vector<std::string> InterfacesOf(CZObject& object) {
  std::vector<std::string> names;
  for (unsigned short id = 1; const char* name = CZObject::GetInterfaceName(id); ++id) {
    if (object.IsA(id)) names.emplace_back(name);
  }
  return names;
}

void Create(const Context& context, const std::string& classIdText) {
  GUID classId = {};
  if (FAILED(CLSIDFromString(FromUtf8(classIdText).c_str(), &classId))) {
    throw Failure(kUsage, "not a class identifier: " + classIdText);
  }
  CZObject* created = ZCore::GetZFactory()->Create(classId);
  if (created == nullptr) {
    throw Failure(kFailed, "no class is registered under " + TextOf(classId));
  }
  ZRefPtr<IZObject> object;
  object.Query(created);
  created->DecrementCount();  // the creator's reference
  const CZRClass& description = *object->getZRClass();
  const std::vector<std::string> interfaces = InterfacesOf(*object);
  if (context.json) {
    PrintJson({{"name", description.GetName()},
               {"clsid", TextOf(classId)},
               {"module", description.GetModuleName()},
               {"version", description.GetVersion()},
               {"references", object->GetReferenceCount()},
               {"interfaces", interfaces}});
  } else {
    PrintLine("created a " + std::string(description.GetName()) + " of module " +
              description.GetModuleName() + ", " + std::to_string(object->GetReferenceCount()) +
              " reference");
    PrintLine("answers to " + Joined(interfaces));
  }
}

}  // namespace

void AddClasses(CLI::App& app, Context& context) {
  Command command(app, "classes", "The classes of the library and the interfaces they answer to");
  command.Footer("Example:\n  zdm classes --json");
  command.Run([&context] { ListClasses(context); });
}

void AddCreate(CLI::App& app, Context& context) {
  auto classId = std::make_shared<std::string>();
  Command command(app, "create",
                  "Create an object by class identifier and say which interfaces it answers to");
  command.Argument("CLASS-ID", *classId, "The identifier, in braces");
  command.Footer("Example:\n  zdm create {65808542-5A64-45F2-B71A-A6A6D03CD2D5}");
  command.Run([&context, classId] { Create(context, *classId); });
}

}  // namespace zdm::tool
