#include "document/ObjectSheet.h"
#include "platform/ole/Variant.h"
#include "platform/system/Text.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Parameters.h"
#include "zdm/properties/IZPropertyIndex.h"

#include <charconv>
#include <memory>
#include <optional>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  LONG id = 0;
  std::string assignment;
};

std::string TextOfName(IZProperty& property) {
  Bstr name;
  property.GetName(name.Out());
  return ToUtf8(name.View());
}

bool IsCalled(IZProperty& property, const std::string& key) {
  GUID guid;
  return TextOf(*property.GetGUID(&guid)) == key || LabelOf(property) == key ||
         TextOfName(property) == key;
}

/// The property that `key` names: by its GUID, its display name or its name.
IZProperty* RequireProperty(const ObjectSheet& sheet, const std::string& key) {
  IZProperty* found = nullptr;
  for (const ObjectSheet::Group& group : sheet.GetGroups()) {
    for (IZProperty* property : group.properties) {
      if (!IsCalled(*property, key)) continue;
      if (found != nullptr) throw Failure(kRefused, "several properties are called " + key);
      found = property;
    }
  }
  if (found == nullptr) throw Failure(kRefused, "the object has no property " + key);
  if (found->IsLinked()) throw Failure(kRefused, key + " comes from a linked parameter");
  if (found->IsReadOnly()) throw Failure(kRefused, key + " is read-only");
  return found;
}

/// The number of the entry with that label.
std::optional<ULONG> ChoiceOf(IZProperty& property, WideView label) {
  auto* choice = ViewAs<IZPropertyIndex>(&property);
  if (choice == nullptr || choice->GetEntryCount() == 0) return {};
  ULONG index = 0;
  Bstr text;
  choice->GetFirstEntry(&index, text.Out());
  do {
    if (!text.IsNull() && text.View() == label) return index;
  } while (choice->GetNextEntry(&index, text.Out()));
  return {};
}

template <class Number>
bool IsWholly(const std::string& text) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && read == end;
}

/// The system's conversion takes a comma for nothing at all, and rounds: 1,5 would become 15.
bool IsNumber(const std::string& text, VARTYPE type) {
  switch (type) {
    case VT_R4:
    case VT_R8:
      return IsWholly<double>(text);
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
      return IsWholly<LONGLONG>(text);
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
      return IsWholly<ULONGLONG>(text);
    default:
      return true;
  }
}

/// Gives the property the value that `text` stands for in the type that it has.
void Change(IZProperty& property, const std::string& text) {
  const WideString wide = FromUtf8(text);
  if (const auto choice = ChoiceOf(property, wide)) {
    property.SetLong(static_cast<LONG>(*choice));
    return;
  }
  Variant former;
  property.GetVariant(former.Out());
  if (former.IsEmpty()) throw Failure(kRefused, "a property without a value cannot be set");
  auto value = Variant::FromText(wide.c_str());
  if (!IsNumber(text, former.type()) || FAILED(value.ChangeType(former.type())))
    throw Failure(kUsage, "not a value here: " + text);
  property.SetVariant(value.Get());
}

void SetProperty(IZDMObject* object, const std::string& key, const std::string& text) {
  const ObjectSheet sheet(object);
  IZProperty* const property = RequireProperty(sheet, key);
  Change(*property, text);
  const Json wanted = ValueOf(*property);
  sheet.Apply(property);
  if (ValueOf(*property) != wanted) throw Failure(kRefused, key + " does not take the value");
}

void SetName(IZDMObject* object, const std::string& name) {
  object->SetName(FromUtf8(name).c_str());
  if (NameOf(*object) != Json(name)) throw Failure(kRefused, "the object does not take the name");
}

void SetKey(const Context& context, const Options& options) {
  const std::size_t split = options.assignment.find('=');
  if (split == std::string::npos || split == 0) {
    throw Failure(kUsage, "not of the form KEY=VALUE: " + options.assignment);
  }
  const std::string key = options.assignment.substr(0, split);
  const std::string value = options.assignment.substr(split + 1);
  Document document = Open(options.file);
  IZDMObject* object = Require(document, options.id);
  if (key == "name") {
    SetName(object, value);
  } else {
    SetProperty(object, key, value);
    document->SetModified(true);
  }
  Save(document);
  if (context.json) PrintJson(Brief(*object->GetOID()));
}

}  // namespace

void AddSet(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "set", "Change an object");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->id, "The object; -1 is the document");
  command.Argument("CHANGE", options->assignment,
                   "KEY=VALUE: name=TEXT gives it that name; another KEY is a property, by its "
                   "display name, name or GUID. Numbers are written as 1234.5");
  command.Footer(
      "Examples:\n"
      "  zdm set house.zdm 2 'name=North wall'\n"
      "  zdm set house.zdm 2 Width=0.3");
  command.Run([&context, options] { SetKey(context, *options); });
}

}  // namespace zdm::tool
